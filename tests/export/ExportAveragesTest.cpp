#include "ExportFixture.h"

using namespace Qt::StringLiterals;

namespace {

/// Class 1 has 72.1 and 80.5 in 期中 and 90 in 期末; the grade has a third student of its stream.
class ExportAverages : public ExportFixture
{
protected:
    ExportAverages()
    {
        test.addStudent(3, 1, u"戊"_s, u"理"_s);
        test.addScores(u"期中"_s, 3, 1, {{u"语文"_s, 100}, {u"总分"_s, 100}});
        test.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 10}});
        request.exams = QStringList{u"期中"_s};
        request.infoRow = true;
    }
};

TEST_F(ExportAverages, StandBelowTheExamsUnderOneLabel)
{
    request.classAverage = {true, u"期中"_s, true};
    request.gradeAverage = {true, u"期末"_s, true};
    run();
    EXPECT_EQ(rows(1, 5), (QStringList{u"1 班1 号：甲||||"_s, u"考试名称|语文|语名|总分|总名"_s,
                                       u"期中|72.1|2|72.1|2"_s,
                                       u"期中班平|76.2999992370605||76.2999992370605|"_s,
                                       u"期中班平|84.1999994913737||84.1999994913737|"_s}));
    EXPECT_EQ(cell(8, 1), u"1 班2 号：乙"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList());
}

TEST_F(ExportAverages, OfTheGradeShowTheirOwnExamWhereThatIsWanted)
{
    request.classAverage = {true, u"期中"_s, true};
    request.gradeAverage = {true, u"期末"_s, true};
    request.gradeAverageByItsExam = true;
    run();
    EXPECT_EQ(cell(4, 1), u"期中班平"_s);
    EXPECT_EQ(row(5), u"期末年平|90||90|"_s);
}

TEST_F(ExportAverages, OfTheGradeAlonePrintTheOtherBoxsLabelAndZeros)
{
    request.gradeAverage = {true, u"期中"_s, true};
    run();
    EXPECT_EQ(row(4), u"选择考试班平|0||0|"_s);
    request.classAverage = {false, u"期末"_s, true};
    run();
    EXPECT_EQ(row(4), u"期末班平|90||90|"_s);
}

TEST_F(ExportAverages, ABoxWithoutAnExamWritesNoRowButItsBorders)
{
    request.classAverage.ticked = true;
    request.blankRows = u"0"_s;
    run();
    EXPECT_EQ(cell(4, 1), u"1 班2 号：乙"_s);
    EXPECT_EQ(sheet().format(4, 1).borders.top, excel::LineStyle::Continuous);
}

TEST_F(ExportAverages, AnExamThatIsChosenWritesNothingUnlessItsBoxIsTicked)
{
    request.classAverage = {false, u"期中"_s, true};
    request.gradeAverage = {false, u"期中"_s, true};
    run();
    EXPECT_EQ(row(4), u"||||"_s);
    EXPECT_EQ(cell(6, 1), u"1 班2 号：乙"_s);
}

TEST_F(ExportAverages, AStudentWithoutRowsHasThemToo)
{
    request.exams = QStringList{u"期末"_s};
    request.classes = QStringList{u"3"_s};
    request.classAverage = {true, u"期中"_s, true};
    run();
    EXPECT_EQ(rows(2, 3),
              (QStringList{u"考试名称|语文|语名|总分|总名"_s, u"期中班平|100||100|"_s}));
    EXPECT_EQ(sheet().format(3, 5).borders.bottom, excel::LineStyle::Continuous);
}

TEST_F(ExportAverages, WithoutTheLabelColumnTheWriteOfTheLabelFails)
{
    request.columns = QStringList{u"姓名"_s, u"语文"_s};
    request.classAverage = {true, u"期中"_s, true};
    run();
    EXPECT_EQ(row(4), u"|76.2999992370605"_s);
    const QString noLabel = u"导出的列里没有“考试名称”。"_s;
    EXPECT_EQ(exportFailures(), (QStringList{noLabel, noLabel}));
}

TEST_F(ExportAverages, AQuestionThatFailsIsToldForEachStudent)
{
    request.columns = QStringList{u"考试名称"_s, u"语文"_s};
    request.classAverage = {true, u"O'Neil"_s, true};
    run();
    EXPECT_EQ(row(4), u"O'Neil班平|0"_s);
    const QString failure = u"语句有语法错误：“O'Neil”里有单引号。 - Function GetBJPJF/Mdl_MDB"_s;
    EXPECT_EQ(test.dialogs.failures, (QStringList{failure, failure}));
}

} // namespace
