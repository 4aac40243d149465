#pragma once

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

/// Why a wish of the user cannot be met. It is no failure, so that no trap may show it with the tag
/// of a routine.
class Refusal : public runtime::Error
{
public:
    using Error::Error;
};

/// Runs the statement in the trap; a Refusal is told as it stands, when everything that the
/// statement began has ended. False if it failed or was refused.
template <class Statement> bool unlessRefused(const runtime::Trap& trap, Statement&& statement)
{
    QString refusal;
    const bool isRun = trap([&] {
        try {
            statement();
        } catch (const Refusal& refused) {
            refusal = refused.description();
        }
    });
    if (!refusal.isEmpty())
        runtime::warn(refusal);
    return isRun && refusal.isEmpty();
}

} // namespace maintenance
