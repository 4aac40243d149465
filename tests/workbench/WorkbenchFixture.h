#pragma once

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

using namespace Qt::StringLiterals;

/// A library of two streams, three classes and two exams.
class WorkbenchTest : public testing::Test
{
protected:
    WorkbenchTest()
    {
        library.addStudent(1, 1, u"赵一"_s, u"文"_s, 1);
        library.addStudent(3, 1, u"钱二"_s, u"理"_s, 2);
        library.addStudent(2, 1, u"孙三"_s, u"理"_s, 1);
        // The second exam comes first in the file; the list follows the numbers.
        library.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 150}});
        library.addExam(u"期中"_s, u"理"_s, 1,
                        {{u"语文"_s, 150}, {u"数学"_s, 150}, {u"总分"_s, u"语文+数学"_s}});
        library.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 150}});
        library.reload();
    }

    support::TestLibrary library{{u"语文"_s, u"数学"_s, u"总分"_s}};
};
