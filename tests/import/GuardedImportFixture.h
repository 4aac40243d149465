#pragma once

#include <gtest/gtest.h>

#include "ExamImportFixture.h"

/// Imports that would cost something unexpected.
class GuardedImport : public ExamImportFixture
{
protected:
    /// 王芳 and 李强 sat 语文.
    void twoStudents()
    {
        sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}, {2, 1, u"李强"_s, 80}});
    }

    /// 王芳 of class 12, which has no student.
    void newClass() { sheet({heads({u"语文"_s}), {12, 1, u"周八"_s, 90}, {1, 1, u"王芳"_s, 91}}); }

    QString exams()
    {
        return library.rows(u"select 考试名称,科类,考试编号,语文 from 考试名称表"_s);
    }
    QString everything()
    {
        return library.rows(u"select * from 成绩表"_s) + library.rows(u"select * from 考试名称表"_s)
               + library.rows(u"select ID,班级,学号,姓名,科类 from 信息表"_s);
    }

    /// The import stops, and nothing was written.
    void expectRefused()
    {
        const QString before = everything();
        EXPECT_EQ(run(), importing::ImportResult::Stopped);
        EXPECT_EQ(everything(), before);
        EXPECT_EQ(questions.labels, QStringList()) << "full marks are not asked for any more";
    }
};
