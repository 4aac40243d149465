#include "platform/runtime/QuietLibraries.h"

#include <cstdio>

#include <QtGlobal>

#include <gtest/gtest.h>

namespace runtime {
namespace {

TEST(QuietLibraries, QtPrintsNoWarnings)
{
    testing::internal::CaptureStderr();
    quietQt();
    qWarning("a word of the library");
    qInstallMessageHandler(nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(QuietLibraries, OthersPrintNothingForAWhile)
{
    testing::internal::CaptureStderr();
    {
        const QuietStderr quiet;
        std::fputs("a word of the library", stderr);
    }
    std::fputs("ours", stderr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "ours");
}

} // namespace
} // namespace runtime
