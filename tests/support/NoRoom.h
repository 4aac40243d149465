#pragma once

#include <QFile>

#include <gtest/gtest.h>

#include "library/CopyKeeping.h"
#include "support/TestLibrary.h"

namespace support {

/// Makes the file of an open library longer than what its disk has room for. It takes no room
/// itself, and the engine does not look at what lies behind its own pages.
inline void outgrowDisk(TestLibrary& test)
{
    const QString path = test.scores.Conn.path();
    ASSERT_TRUE(QFile::resize(path, library::freeBytesBeside(path) + (1LL << 30)));
}

/// Nothing was asked and nothing else was said.
inline void expectOnlyNoRoomTold(const QStringList& shown)
{
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown[0].startsWith(QStringLiteral("磁盘上放不下成绩库的备份：备份要 ")));
}

} // namespace support
