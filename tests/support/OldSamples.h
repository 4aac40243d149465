#pragma once

#include <QString>

#include <gtest/gtest.h>

#include "support/FileBytes.h"

namespace support {

/// The path of a file of the samples; names as "one-stream.json".
inline QString oldSamplePath(const QString& name)
{
    return QStringLiteral(YUNSHAN_FIXTURES "/") + name;
}

/// The bytes of a library of the old engine; names as "one-stream".
inline QByteArray oldSample(const QString& name)
{
    return read(oldSamplePath(name + QStringLiteral(".CJK")));
}

/// A file that has no password with one. It lies in the header over a mask that undoes itself, and
/// where there was none the mask alone is there.
inline QByteArray withPassword(QByteArray file, const QString& password)
{
    constexpr qsizetype passwordPlace = 0x42;
    for (qsizetype i = 0; i < password.size(); ++i) {
        const ushort letter = password[i].unicode();
        char* at = file.data() + passwordPlace + 2 * i;
        at[0] = char(at[0] ^ (letter & 0xff));
        at[1] = char(at[1] ^ (letter >> 8));
    }
    return file;
}

inline QByteArray oldSampleWithPassword(const QString& name, const QString& password)
{
    return withPassword(oldSample(name), password);
}

} // namespace support
