#pragma once

#include <QByteArray>
#include <QFile>

#include <gtest/gtest.h>

namespace support {

inline void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// Empty if it cannot be read.
inline QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace support
