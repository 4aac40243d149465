#include <gtest/gtest.h>

#include "individual/paint/PaintingApplication.h"

int main(int count, char* arguments[])
{
    testing::InitGoogleTest(&count, arguments);
    const individual::PaintingApplication application(arguments[0]);
    return RUN_ALL_TESTS();
}
