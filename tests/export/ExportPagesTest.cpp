#include "ExportFixture.h"

using namespace Qt::StringLiterals;
using exporting::BlockLayout;

namespace {

class ExportPages : public ExportFixture
{
protected:
    /// Students of class 7, without scores.
    void addStudents(int count)
    {
        test.execute(u"begin"_s);
        for (int number = 1; number <= count; ++number)
            test.addStudent(7, number, u"生%1"_s.arg(number), u"理"_s);
        test.execute(u"commit"_s);
        request.classes = QStringList{u"7"_s};
        request.infoRow = true;
    }

    /// What the students' rows of class 7 begin with.
    static QString info(int number) { return u"7 班%1 号：生%1"_s.arg(number); }
};

TEST_F(ExportPages, EndAnywhereUnlessStudentsAreToStayTogether)
{
    addStudents(40);
    run();
    EXPECT_TRUE(sheet().pageBreaks().empty());
}

TEST_F(ExportPages, EndBetweenStudentsWhereTheyAreToStayTogether)
{
    addStudents(20);
    request.keepBlocksTogether = true;
    request.blankRows = u"3"_s;
    run();
    // Two rows and three blank ones each: six on a page of 31 rows, whose last row the seventh
    // would begin in.
    EXPECT_EQ(sheet().pageBreaks(), (std::vector<int>{31, 61, 91}));
    EXPECT_EQ(cell(31, 1), info(7));
    EXPECT_EQ(cell(61, 1), info(13));
}

TEST_F(ExportPages, AStudentWhoJustFitsStaysOnThePage)
{
    addStudents(16);
    request.keepBlocksTogether = true;
    request.blankRows = u"27"_s;
    run();
    EXPECT_EQ(sheet().pageBreaks().front(), 59);
    EXPECT_EQ(cell(30, 1), info(2));
}

TEST_F(ExportPages, AStudentWithMoreRowsThanAPageBeginsOnOneOfHisOwn)
{
    addStudents(3);
    for (int number = 3; number <= 37; ++number) {
        const QString exam = u"考试%1"_s.arg(number);
        test.addExam(exam, u"理"_s, number, {{u"语文"_s, 100}});
        test.addScores(exam, 7, 2, {{u"总分年名"_s, number}});
        request.exams.append(exam);
    }
    request.keepBlocksTogether = true;
    run();
    EXPECT_EQ(sheet().pageBreaks(), std::vector<int>{5});
    // His second page has room for the third student.
    EXPECT_EQ(cell(5, 1), info(2));
    EXPECT_EQ(cell(44, 1), info(3));
}

TEST_F(ExportPages, BeyondThePageBreaksOfASheetTheNextStudentsBeginAFurtherOne)
{
    addStudents(1025);
    request.layout = BlockLayout::RankChart;
    run();
    EXPECT_EQ(sheet(1).pageBreaks().size(), 1023U);
    EXPECT_EQ(sheet(1).Cells(1022 * 31 + 1, 1).text(), info(1023));
    EXPECT_EQ(sheet(2).Cells(1, 1).text(), info(1024));
    EXPECT_EQ(sheet(2).Cells(32, 1).text(), info(1025));
    EXPECT_EQ(sheet(2).pageBreaks(), (std::vector<int>{31, 62}));
    EXPECT_EQ(sheet(2).drawings().size(), 2U);
    EXPECT_EQ(sheet(2).geometry().shownColumnWidth(1), 7.5);
    EXPECT_EQ(std::as_const(sheet(2)).PageSetup(), std::as_const(sheet(1)).PageSetup());
    EXPECT_EQ(&result.book->activeSheet(), &sheet(1));
    EXPECT_EQ(result.book->Worksheets().Count(), 3);
}

TEST_F(ExportPages, StudentsWhoStayTogetherBeginAFurtherSheetToo)
{
    addStudents(1026);
    request.keepBlocksTogether = true;
    request.blankRows = u"30"_s;
    run();
    EXPECT_EQ(sheet(1).pageBreaks().size(), 1023U);
    EXPECT_EQ(sheet(2).Cells(1, 1).text(), info(1025));
    EXPECT_EQ(sheet(2).pageBreaks(), std::vector<int>{33});
}

} // namespace
