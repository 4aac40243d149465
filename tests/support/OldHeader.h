#pragma once

#include "oldlibraries/FileHeader.h"

namespace support {

/// A file of the old engine, or its first page, with that part of the header plain, or stirred
/// again, which all files have stirred with one key.
inline QByteArray withHeaderKey(QByteArray file)
{
    constexpr qsizetype from = 0x18;
    constexpr qsizetype size = 128;
    constexpr quint32 key = 0x6B39DAC7;
    const QByteArray stirred = oldlibraries::withKey(file.mid(from, size), key);
    return file.replace(from, stirred.size(), stirred);
}

} // namespace support
