#include "maintenance/ExamRemoval.h"

#include <gtest/gtest.h>

#include "support/FileBytes.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

const QString question = u"确实要删除以下考试吗？删除后不可恢复，最好在删除前备份数据库。\n\n"_s;

class ExamRemovals : public testing::Test
{
protected:
    ExamRemovals()
    {
        for (const QString& exam : {u"期中"_s, u"期末"_s, u"月考"_s}) {
            test.addExam(exam, u"理"_s, 1, {{u"语文"_s, 100}});
            test.addExam(exam, u"文"_s, 1, {{u"语文"_s, 100}});
        }
        test.addStudent(1, 1, u"甲"_s, u"理"_s);
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 70}});
        test.reload();
    }

    QString exams() { return test.rows(u"select 考试名称 from 考试名称表"_s); }

    support::TestLibrary test{{u"语文"_s}};
    const QString all = u"期中 / 期中 / 期末 / 期末 / 月考 / 月考"_s;
};

TEST_F(ExamRemovals, OfNoExamAskNothing)
{
    maintenance::removeExams(test.scores, {});
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(ExamRemovals, NameTheExamsFromTheLastToTheFirstAndStopOnCancel)
{
    test.dialogs.expect(question, runtime::Answer::Cancel);
    maintenance::removeExams(test.scores, {u"期中"_s, u"期末"_s});
    EXPECT_EQ(test.dialogs.shown, QStringList{u"提示: "_s + question + u"期末\n期中\n"_s});
    EXPECT_EQ(test.dialogs.look(question).buttons, runtime::Buttons::OkCancel);
    EXPECT_EQ(exams(), all);
}

TEST_F(ExamRemovals, AreRefusedByTheEngineStatementByStatementAndRemoveNothing)
{
    test.dialogs.expect(question, runtime::Answer::Ok);
    const QByteArray before = support::read(test.scores.LibPath);
    maintenance::removeExams(test.scores, {u"期中"_s, u"期末"_s});
    ASSERT_EQ(test.dialogs.failures.size(), 4) << "two statements for each exam";
    for (const QString& failure : test.dialogs.failures) {
        EXPECT_TRUE(failure.contains(u"语法错误"_s)) << failure.toStdString();
        EXPECT_TRUE(failure.endsWith(u" - Sub DelKaoShi/Mdl_MDB"_s)) << failure.toStdString();
    }
    EXPECT_EQ(test.dialogs.shown.size(), 5) << "nothing is told at the end";
    EXPECT_EQ(support::read(test.scores.LibPath), before);
}

TEST_F(ExamRemovals, AreRefusedWhateverTheNameHolds)
{
    for (const QString& name :
         {u"2024--2025"_s, u"' or '1'='1"_s, u"'期中"_s, u"期中'--"_s, u"/*"_s, u"a\nb"_s, u""_s,
          u"?"_s, u"'';delete from 成绩表 where 班级='"_s, QString(10'000, u'长')}) {
        test.dialogs.failures.clear();
        maintenance::DelKaoShi(test.scores, name);
        EXPECT_EQ(test.dialogs.failures.size(), 2) << name.left(40).toStdString();
        EXPECT_EQ(exams(), all) << name.left(40).toStdString();
        EXPECT_EQ(test.rows(u"select 语文 from 成绩表"_s), u"70"_s);
    }
}

} // namespace
