#include "oldlibraries/ReportForms.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/grid/GridText.h"
#include "platform/runtime/Error.h"
#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"
#include "workbooks/model/Application.h"

using namespace Qt::StringLiterals;
using namespace oldlibraries;

namespace {

ConversionReport oneTable(std::vector<Finding> findings)
{
    return {u"/学校/初一.CJK"_s,
            u"/学校/初一（转换）.CJK"_s,
            {{u"信息表"_s, 181}},
            std::move(findings)};
}

const QString head = u"表\t行\t列\t值\t处理\n"
                     "（旧成绩库）\t\t\t/学校/初一.CJK\t没有改动\n"
                     "（新成绩库）\t\t\t/学校/初一（转换）.CJK\t已经建成\n"
                     "（说明）\t\t\t\t名次、标准分和总分原样转入；"
                     "如需重算，请选择考试后点“计算总分”。\n"
                     "信息表\t\t\t181 行\t已经转入\n"_s;

/// The text of the one finding's row in a report's text.
QString lastLine(const QString& text)
{
    return text.chopped(1).section(u'\n', -1);
}

ConversionReport withValue(const QString& value)
{
    return oneTable({{u"信息表"_s, 3, u"姓名"_s, value, u"原样转入。"_s}});
}

/// A report saved as a workbook and opened again.
class SavedSheet
{
public:
    explicit SavedSheet(const ConversionReport& report)
    {
        const QString path = m_folder.filePath(u"报告.XLSX"_s);
        saveReport(report, path);
        m_application.Workbooks().Open(path);
    }

    excel::Worksheet& sheet() { return m_application.Workbooks().Item(1).activeSheet(); }

private:
    QTemporaryDir m_folder;
    excel::Application m_application;
};

} // namespace

TEST(ReportForms, FilesAndTablesStandAheadOfTheFindings)
{
    const ConversionReport report = withValue(u"O'Neil"_s);
    const QString all = head + u"信息表\t3\t姓名\tO'Neil\t原样转入。\n"_s;
    EXPECT_EQ(grid::gridText(reportGrid(report)), all);
    EXPECT_EQ(reportText(report), all);
}

TEST(ReportForms, WithoutFindingsItSaysSo)
{
    EXPECT_EQ(reportText(oneTable({})), head + u"（说明）\t\t\t\t没有发现需要说明的值。\n"_s);
}

TEST(ReportForms, AFindingOfAWholeTableHasNoRow)
{
    const ConversionReport report = oneTable({{u"颜色表"_s, 0, {}, {}, u"缺少的表，已经建立。"_s}});
    EXPECT_EQ(lastLine(reportText(report)), u"颜色表\t\t\t\t缺少的表，已经建立。"_s);
}

TEST(ReportForms, TheHeadingStaysWhileTheGridScrolls)
{
    const grid::FlexGrid grid = reportGrid(withValue({}));
    EXPECT_EQ(grid.FixedRows, 1);
    EXPECT_EQ(grid.FixedCols, 0);
}

TEST(ReportForms, EveryValueStaysOnItsRow)
{
    const struct
    {
        QString value, inGrid, inText;
    } rows[] = {
        {u"一\r\n二\n三\r四"_s, u"一⏎二⏎三⏎四"_s, u"一\\r\\n二\\n三\\r四"_s},
        {u"一\t二"_s, u"一⇥二"_s, u"一\\t二"_s},
        {u"C:\\new"_s, u"C:\\new"_s, u"C:\\\\new"_s},
        {u"\x1b[2J'; drop table 信息表 --"_s, u"␛[2J'; drop table 信息表 --"_s,
         u"␛[2J'; drop table 信息表 --"_s},
        {QString(10'000, u'甲'), QString(200, u'甲') + u'…', QString(200, u'甲') + u'…'},
        {QString(200, u'甲'), QString(200, u'甲'), QString(200, u'甲')},
        {QString(199, u'甲') + u"𬭎𬭎"_s, QString(199, u'甲') + u'…',
         QString(199, u'甲') + u'…'},
    };
    for (const auto& row : rows) {
        const ConversionReport report = withValue(row.value);
        const grid::FlexGrid grid = reportGrid(report);
        EXPECT_EQ(grid.TextMatrix(grid.Rows() - 1, 3), row.inGrid);
        EXPECT_EQ(lastLine(reportText(report)),
                  u"信息表\t3\t姓名\t"_s + row.inText + u"\t原样转入。"_s);
    }
}

TEST(ReportForms, NamesOfTablesAndColumnsAreShownLikeValues)
{
    const ConversionReport report =
        oneTable({{u"表\t一"_s, 1, u"列\n二"_s, {}, u"改名为“列 二”。\n"_s},
                  {QString(10'000, u'表'), 1, QString(10'000, u'列'), {}, QString(300, u'改')}});
    const grid::FlexGrid grid = reportGrid(report);
    const int row = grid.Rows() - 2;
    EXPECT_EQ(grid.TextMatrix(row, 0), u"表⇥一"_s);
    EXPECT_EQ(grid.TextMatrix(row, 2), u"列⏎二"_s);
    EXPECT_EQ(grid.TextMatrix(row, 4), u"改名为“列 二”。⏎"_s);
    EXPECT_EQ(grid.TextMatrix(row + 1, 0).size(), 201);
    EXPECT_EQ(grid.TextMatrix(row + 1, 2).size(), 201);
    // Sentences are ours, and are never cut.
    EXPECT_EQ(grid.TextMatrix(row + 1, 4).size(), 300);
}

TEST(ReportForms, TheGridTellsHowManyFindingsItLeavesOut)
{
    const Finding finding{u"信息表"_s, 1, u"姓名"_s, {}, u"原样转入。"_s};
    const ConversionReport fits = oneTable(std::vector<Finding>(20'000, finding));
    EXPECT_EQ(reportGrid(fits).Rows(), 20'005);
    const ConversionReport more = oneTable(std::vector<Finding>(20'007, finding));
    const grid::FlexGrid grid = reportGrid(more);
    EXPECT_EQ(grid.Rows(), 20'006);
    EXPECT_EQ(grid.TextMatrix(grid.Rows() - 1, 4), u"还有 7 项没有列出，请保存报告后查看。"_s);
    EXPECT_EQ(reportText(more).count(u'\n'), 20'012);
}

TEST(ReportForms, ASheetHasWholeValuesAndNumbers)
{
    const QString value = u"=1+1\n"_s + QString(10'000, u'甲');
    SavedSheet saved(withValue(value));
    excel::Worksheet& sheet = saved.sheet();
    EXPECT_EQ(sheet.Cells(1, 5).text(), u"处理"_s);
    EXPECT_EQ(sheet.lastUsedRow(), 6);
    EXPECT_EQ(sheet.Cells(6, 2).kind(), runtime::Value::Kind::Double);
    EXPECT_EQ(sheet.Cells(6, 2).text(), u"3"_s);
    EXPECT_EQ(sheet.Cells(6, 4).text(), value);
    EXPECT_FALSE(sheet.format(6, 4).wrapText);
}

TEST(ReportForms, ASheetTellsHowManyFindingsItLeavesOut)
{
    const ConversionReport more = oneTable(std::vector<Finding>(100'001, Finding{}));
    SavedSheet saved(more);
    excel::Worksheet& sheet = saved.sheet();
    EXPECT_EQ(sheet.Cells(sheet.lastUsedRow(), 5).text(),
              u"还有 1 项没有列出，请保存成文本文件后查看。"_s);
}

TEST(ReportForms, IsSavedAsTheNameSays)
{
    const QTemporaryDir folder;
    const ConversionReport report = withValue(u"甲"_s);
    saveReport(report, folder.filePath(u"报告.txt"_s));
    EXPECT_EQ(QString::fromUtf8(support::read(folder.filePath(u"报告.txt"_s))), reportText(report));
    SavedSheet saved(report);
    EXPECT_EQ(saved.sheet().Name(), u"转换报告"_s);
    EXPECT_EQ(saved.sheet().Cells(6, 4).text(), u"甲"_s);
}

TEST(ReportForms, WhereItCannotBeSavedIsTold)
{
    const QTemporaryDir folder;
    const QString missing = folder.filePath(u"没有/报告"_s);
    EXPECT_NE(support::errorOf([&] { saveReport(oneTable({}), missing + u".txt"_s); }), QString());
    EXPECT_NE(support::errorOf([&] { saveReport(oneTable({}), missing + u".xlsx"_s); }), QString());
}
