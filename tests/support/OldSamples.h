#pragma once

#include <QString>

#include <gtest/gtest.h>

#include "support/FileBytes.h"

namespace support {

/// The bytes of a library of the old engine; names as "one-stream".
inline QByteArray oldSample(const QString& name)
{
    return read(QStringLiteral(YUNSHAN_FIXTURES "/") + name + QStringLiteral(".CJK"));
}

/// The same with a password. It lies in the header over a mask that undoes itself, and where there
/// was none the mask alone is there.
inline QByteArray oldSampleWithPassword(const QString& name, const QString& password)
{
    constexpr qsizetype passwordPlace = 0x42;
    QByteArray bytes = oldSample(name);
    for (qsizetype i = 0; i < password.size(); ++i) {
        const ushort letter = password[i].unicode();
        char* at = bytes.data() + passwordPlace + 2 * i;
        at[0] = char(at[0] ^ (letter & 0xff));
        at[1] = char(at[1] ^ (letter >> 8));
    }
    return bytes;
}

} // namespace support
