#include "individual/StudentReport.h"

#include <gtest/gtest.h>

#include "support/FileBytes.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace individual {

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

/// A bitmap of one dot, in a colour.
QByteArray bitmap(char blue)
{
    QByteArray bytes =
        QByteArray::fromHex("424d3a0000000000000036000000280000000100000001000000010018"
                            "000000000004000000130b0000130b00000000000000000000");
    return bytes + QByteArray(1, blue) + QByteArray(3, '\0');
}

class ReportOfAStudent : public testing::Test
{
protected:
    void SetUp() override
    {
        id = test.addStudent(1, 1, u"-3"_s, u"理"_s);
        test.addScores(u"2024"_s, 1, 1,
                       {{u"考试编号"_s, 1}, {u"语文"_s, 80.5}, {u"语文年名"_s, 3}});
        test.addScores(u"1-2"_s, 1, 1, {{u"考试编号"_s, 2}, {u"语文"_s, -1}});
        student.ShowGeRenCJ(id);
    }

    excel::Worksheet& report(ReportContent content, const SavePic& savePic)
    {
        excel::Application& application = wydc(applications, test.paths, student.MSFlexGrid1,
                                               student.StuName.text(), content, savePic);
        return application.Workbooks().Item(1).Worksheets().Item(1);
    }

    excel::Worksheet& withPicture(char blue)
    {
        return report(ReportContent::ExamsAndChart, [blue](const QString& path) {
            support::write(path, bitmap(blue));
            return true;
        });
    }

    excel::Worksheet& examsAlone()
    {
        return report(ReportContent::Exams, [](const QString&) {
            ADD_FAILURE() << "no picture is wanted";
            return false;
        });
    }

    static QStringList row(const excel::Worksheet& sheet, int number)
    {
        QStringList texts;
        for (int column = 1; column <= 3; ++column)
            texts.append(sheet.Cells(number, column).text());
        return texts;
    }

    TestLibrary test{{u"语文"_s}};
    qint64 id = 0;
    excel::Applications applications;
    StudentExams student{test.scores};
};

TEST_F(ReportOfAStudent, HoldsTheNameAndTheGridBelow)
{
    const excel::Worksheet& sheet = examsAlone();
    EXPECT_EQ(row(sheet, 1), (QStringList{u"-3"_s, QString(), QString()}));
    EXPECT_EQ(row(sheet, 2), (QStringList{u"考试名称"_s, u"语文"_s, u"语名"_s}));
    EXPECT_EQ(row(sheet, 3), (QStringList{u"2024"_s, u"80.5"_s, u"3"_s}));
    EXPECT_EQ(row(sheet, 4), (QStringList{u"1-2"_s, u"缺考"_s, u"0"_s}));
    EXPECT_EQ(sheet.lastUsedRow(), 4);
}

TEST_F(ReportOfAStudent, NamesStayTextsAndScoresAreNumbers)
{
    const excel::Worksheet& sheet = examsAlone();
    EXPECT_EQ(sheet.Cells(1, 1).kind(), runtime::Value::Kind::Text);
    EXPECT_EQ(sheet.Cells(3, 1).kind(), runtime::Value::Kind::Text);
    EXPECT_EQ(sheet.Cells(4, 1).kind(), runtime::Value::Kind::Text);
    EXPECT_TRUE(sheet.Cells(3, 2).isNumber());
}

TEST_F(ReportOfAStudent, TheGridHasLinesAroundEachCellAndTheNameHasNone)
{
    const excel::Worksheet& sheet = examsAlone();
    EXPECT_EQ(sheet.format(2, 1).borders.top, excel::LineStyle::Continuous);
    EXPECT_EQ(sheet.format(4, 3).borders.bottom, excel::LineStyle::Continuous);
    EXPECT_EQ(sheet.format(1, 1).borders.top, excel::LineStyle::None);
    EXPECT_EQ(sheet.format(5, 1).borders.bottom, excel::LineStyle::None);
    EXPECT_EQ(sheet.format(2, 4).borders.right, excel::LineStyle::None);
}

TEST_F(ReportOfAStudent, ColumnsAreAsWideAsTheirTexts)
{
    excel::Worksheet& sheet = examsAlone();
    const double wide = sheet.Range(1, 1, 1, 1).Width();
    const double narrow = sheet.Range(1, 2, 1, 2).Width();
    EXPECT_GT(wide, 1.5 * narrow);
    EXPECT_EQ(sheet.Range(1, 3, 1, 3).Width(), narrow);
}

TEST_F(ReportOfAStudent, IsShownUnsavedInASpreadsheetOfItsOwn)
{
    examsAlone();
    examsAlone();
    ASSERT_EQ(applications.size(), 2u);
    EXPECT_TRUE(applications.back()->Visible());
    EXPECT_FALSE(applications.back()->Workbooks().Item(1).Saved());
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"导出完成！"_s, u"导出完成！"_s}));
}

TEST_F(ReportOfAStudent, TheChartStandsAPointUnderTheTopOfTheSecondRowBelow)
{
    excel::Worksheet& sheet = withPicture(1);
    ASSERT_EQ(sheet.drawings().size(), 1u);
    EXPECT_EQ(sheet.Shapes(1).Top(), sheet.Range(5, 1, 5, 1).Top() + 1);
    EXPECT_EQ(sheet.Shapes(1).Left(), 0);
}

TEST_F(ReportOfAStudent, TheExamsAloneHaveNoPicture)
{
    EXPECT_TRUE(examsAlone().drawings().empty());
}

TEST_F(ReportOfAStudent, AnEarlierWorkbookKeepsItsPicture)
{
    const excel::Worksheet& first = withPicture(1);
    const excel::Worksheet& second = withPicture(2);
    EXPECT_EQ(std::get<excel::Picture>(first.drawings().front()).bytes(), bitmap(1));
    EXPECT_EQ(std::get<excel::Picture>(second.drawings().front()).bytes(), bitmap(2));
    EXPECT_EQ(support::read(test.paths.dataFile(u"tmp.bmp"_s)), bitmap(2));
}

TEST_F(ReportOfAStudent, AChartThatCouldNotBeSavedIsNotReplacedByAnOlderOne)
{
    withPicture(1);
    const excel::Worksheet& sheet =
        report(ReportContent::ExamsAndChart, [](const QString&) { return false; });
    EXPECT_TRUE(sheet.drawings().empty());
    EXPECT_EQ(test.dialogs.shown.last(), u"导出完成！"_s);
}

TEST_F(ReportOfAStudent, APictureThatIsNoneIsToldAndTheExamsStand)
{
    const excel::Worksheet& sheet = report(ReportContent::ExamsAndChart, [](const QString& path) {
        support::write(path, "none");
        return true;
    });
    EXPECT_EQ(sheet.Cells(2, 1).text(), u"考试名称"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_TRUE(test.dialogs.failures.front().endsWith(u" - Sub wydc/FormGeRenChenJi"_s));
}

TEST_F(ReportOfAStudent, WithoutAStudentItHoldsTheEmptyGridUnderAnEmptyName)
{
    test.addExam(u"期中"_s, u"理"_s, 1, {});
    test.addExam(u"期末"_s, u"理"_s, 2, {});
    test.reload();
    const StudentExams nobody(test.scores);
    excel::Application& application = wydc(applications, test.paths, nobody.MSFlexGrid1, QString(),
                                           ReportContent::Exams, nullptr);
    const excel::Worksheet& sheet = application.Workbooks().Item(1).Worksheets().Item(1);
    EXPECT_EQ(row(sheet, 1).join(QString()), QString());
    EXPECT_EQ(row(sheet, 2), (QStringList{u"考试名称"_s, u"语文"_s, u"语名"_s}));
    EXPECT_EQ(row(sheet, 3).join(QString()), QString());
    EXPECT_EQ(sheet.format(4, 3).borders.bottom, excel::LineStyle::Continuous);
    EXPECT_EQ(sheet.format(5, 3).borders.bottom, excel::LineStyle::None);
}

} // namespace

} // namespace individual
