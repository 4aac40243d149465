// Texts of a library never become more of a statement than they stand for.
#include "ReportFixture.h"

#include "statistics/NamedReports.h"

namespace {

using statistics::Transfer;

class NamesInReports : public ReportTest
{
protected:
    /// The report of 考试人数 on that exam; nothing is asked.
    void run(QString exam)
    {
        context.forgetRows();
        statistics::namedReport(u"考试人数"_s)(context, exam, grid, Transfer::GridOnly);
    }

    support::ScriptedDialogs& dialogs = library.dialogs;
};

TEST_F(NamesInReports, AnExamWithAnApostropheIsNoStatementAndCountsNobody)
{
    for (const QString& exam : {u"' or ''='"_s, u"期中' --"_s, u"期'中"_s}) {
        dialogs.failures.clear();
        run(exam);
        ASSERT_FALSE(dialogs.failures.isEmpty()) << exam.toStdString();
        for (const QString& failure : dialogs.failures)
            EXPECT_TRUE(failure.contains(u"里有单引号"_s)) << failure.toStdString();
        for (int r = 0; r < grid.Rows(); ++r)
            EXPECT_FALSE(row(r).contains(u"/3"_s)) << "no student is counted";
    }
}

TEST_F(NamesInReports, SignsOfCommentsAndPatternsInANameAreJustItsText)
{
    for (const QString& exam : {u"2024--2025期中"_s, u"期中/*"_s, u"100%"_s, u"[期]中"_s, u"a]b"_s,
                                u"x\ny"_s, u"=1+1"_s, QString(50, u'名')}) {
        dialogs.failures.clear();
        addExam(exam, 9);
        score(exam, 1, 1, {77, 10, 87, 1});
        library.reload();
        run(exam);
        EXPECT_EQ(dialogs.failures, QStringList()) << exam.toStdString();
        EXPECT_EQ(grid.TextMatrix(2, 1), u"1/0/1"_s) << exam.toStdString();
    }
}

TEST_F(NamesInReports, ACategoryThatIsNoNumberIsRefusedAndNotRun)
{
    for (const QString& code : {u"1) or (1=1"_s, u"1 or 1=1"_s, u"1 --"_s, u"'1'"_s}) {
        dialogs.failures.clear();
        set(u"参与统计的学生类别代码"_s, QString(code).replace(u"'"_s, u"''"_s));
        library.scores.settings.GetTJLB();
        run(u"期中"_s);
        EXPECT_FALSE(dialogs.failures.isEmpty()) << code.toStdString();
        for (int r = 0; r < grid.Rows(); ++r)
            EXPECT_FALSE(row(r).contains(u"/3"_s)) << code.toStdString();
    }
}

} // namespace
