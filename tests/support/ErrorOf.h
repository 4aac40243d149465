#pragma once

#include <gtest/gtest.h>

#include "platform/runtime/Error.h"

namespace support {

/// What the user would read about the error that a call throws. A call that throws none fails the
/// test.
template <class Call> QString errorOf(const Call& call)
{
    try {
        call();
    } catch (const runtime::Error& error) {
        return error.description();
    }
    ADD_FAILURE() << "no error";
    return {};
}

} // namespace support
