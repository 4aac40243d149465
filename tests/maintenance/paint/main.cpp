#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/runtime/QuietLibraries.h"

// Readers of pictures are plug-ins, which an application without a display finds too.
int main(int count, char* arguments[])
{
    testing::InitGoogleTest(&count, arguments);
    runtime::quietQt();
    const QCoreApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
