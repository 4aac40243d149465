#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"
#include "workbooks/model/Application.h"
#include "workbooks/writers/SampleBook.h"

using namespace Qt::StringLiterals;
using excel::Beside;
using support::errorOf;

namespace {

QStringList namesOf(excel::Workbook& book)
{
    QStringList names;
    for (int i = 1; i <= book.Sheets().Count(); ++i)
        names.append(book.Sheets().Item(i).Name());
    return names;
}

class WorkbookTest : public testing::Test
{
protected:
    excel::Application application;
    excel::Workbook& book = application.Workbooks().Add();
    excel::Worksheet& sheet = book.Worksheets().Item(1);
};

} // namespace

TEST_F(WorkbookTest, ASheetIsAddedBesideAnotherAndComesForward)
{
    excel::Worksheet& added = book.Sheets().Add(Beside::After, book.Sheets().Item(3));
    EXPECT_EQ(namesOf(book), (QStringList{u"Sheet1"_s, u"Sheet2"_s, u"Sheet3"_s, u"Sheet4"_s}));
    EXPECT_EQ(&book.activeSheet(), &added);
    book.Sheets().Add(Beside::Before, sheet);
    EXPECT_EQ(namesOf(book).first(), u"Sheet5"_s);
    sheet.setName(u"sheet6"_s);
    EXPECT_EQ(book.Sheets().Add(Beside::After, sheet).Name(), u"Sheet7"_s);
    excel::Workbook& other = application.Workbooks().Add();
    EXPECT_EQ(errorOf([&] { other.Sheets().Add(Beside::After, sheet); }),
              u"工作表不在这个工作簿中，不能在它旁边插入新的工作表。"_s);
}

TEST_F(WorkbookTest, ADeletedSheetRefusesEveryCallAndTheNextComesForward)
{
    sheet.Delete();
    EXPECT_EQ(namesOf(book), (QStringList{u"Sheet2"_s, u"Sheet3"_s}));
    EXPECT_EQ(book.activeSheet().Name(), u"Sheet2"_s);
    EXPECT_EQ(errorOf([&] { sheet.setCell(1, 1, 1); }), u"工作表已经删除。"_s);
    EXPECT_EQ(errorOf([&] { sheet.Delete(); }), u"工作表已经删除。"_s);
    book.Sheets().Item(2).Activate();
    book.Sheets().Item(2).Delete();
    EXPECT_EQ(book.activeSheet().Name(), u"Sheet2"_s);
}

TEST_F(WorkbookTest, TheLastVisibleSheetStays)
{
    book.Sheets().Item(2).setVisibility(excel::Visibility::Hidden);
    book.Sheets().Item(3).Delete();
    EXPECT_EQ(errorOf([&] { sheet.Delete(); }),
              u"工作簿中至少要有一个可见的工作表，不能删除“Sheet1”。"_s);
    EXPECT_EQ(book.Sheets().Count(), 2);
}

TEST_F(WorkbookTest, NamesThatNoSheetCanHaveAreRefusedAndTheOldOneStays)
{
    const QString longName = u"二〇二三至二〇二四学年度第一学期期末考试原始分和名次(文)第一版"_s;
    const struct
    {
        QString name;
        QString error;
    } rows[] = {
        {QString(), u"不能把工作表命名为“”：名称不能为空。"_s},
        {longName, u"不能把工作表命名为“"_s + longName + u"”：名称最多 31 个字符。"_s},
        {u"a/b"_s, u"不能把工作表命名为“a/b”：名称不能含有 : \\ / ? * [ ] 中的字符。"_s},
        {u"[1]"_s, u"不能把工作表命名为“[1]”：名称不能含有 : \\ / ? * [ ] 中的字符。"_s},
        {u"'a"_s, u"不能把工作表命名为“'a”：名称不能以单引号开头或结尾。"_s},
        {u"a'"_s, u"不能把工作表命名为“a'”：名称不能以单引号开头或结尾。"_s},
        {u"sheet2"_s, u"不能把工作表命名为“sheet2”：已有同名的工作表。"_s},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(errorOf([&] { sheet.setName(row.name); }), row.error);
        EXPECT_EQ(sheet.Name(), u"Sheet1"_s);
    }
    ASSERT_EQ(longName.size(), 32);
    sheet.setName(longName.left(31));
    EXPECT_EQ(sheet.Name(), longName.left(31));
    sheet.setName(u"期中原始分和名次(文)"_s);
    sheet.setName(u"期中原始分和名次(文)"_s);
    EXPECT_EQ(sheet.Name(), u"期中原始分和名次(文)"_s);
}

TEST_F(WorkbookTest, EveryChangeLeavesItUnsaved)
{
    const BookFolder folder;
    excel::Picture& picture = sheet.insertPicture(folder.write(u"a.png"_s, samplePng()));
    book.setSaved(true);
    const std::function<void()> changes[] = {
        [&] { sheet.setCell(1, 1, 1); },
        [&] { sheet.setCellText(1, 1, u"文"_s); },
        [&] { sheet.setName(u"名"_s); },
        [&] { sheet.Cells().setHorizontalAlignment(excel::HorizontalAlignment::Center); },
        [&] { sheet.Range(1, 1, 2, 2).setMergeCells(true); },
        [&] { sheet.Range(1, 1, 2, 2).setBorders(excel::LineStyle::Continuous); },
        [&] { sheet.setColumnWidth(1, 2, 5); },
        [&] { sheet.setRowHeight(1, 20); },
        [&] { sheet.setRowState(1, excel::RowState::Hidden); },
        [&] { sheet.PageSetup().PaperSize = excel::paper::b5; },
        [&] { sheet.addPageBreak(5); },
        [&] { picture.setLeft(10); },
        [&] { picture.setTop(20); },
        [&] { picture.setWidth(30); },
        [&] { picture.setHeight(40); },
        [&] { book.Sheets().Add(Beside::After, sheet); },
        [&] { book.Sheets().Item(2).Delete(); },
    };
    EXPECT_TRUE(book.Saved());
    for (const std::function<void()>& change : changes) {
        const quint64 before = book.revision();
        book.setSaved(true);
        change();
        EXPECT_FALSE(book.Saved());
        EXPECT_GT(book.revision(), before);
    }
}

TEST_F(WorkbookTest, LookingAtASheetLeavesItSaved)
{
    const quint64 before = book.revision();
    book.Sheets().Item(2).Activate();
    EXPECT_TRUE(book.Saved());
    EXPECT_GT(book.revision(), before);
}

TEST_F(WorkbookTest, IsSavedAfterReadingAndAfterWriting)
{
    EXPECT_TRUE(application.Workbooks().Open(fixture(u"kinds-of-cells.xlsx"_s)).Saved());
    const QTemporaryDir folder;
    sheet.setCell(1, 1, 1);
    book.SaveAs(folder.filePath(u"a.xlsx"_s));
    EXPECT_TRUE(book.Saved());
    EXPECT_EQ(book.path(), folder.filePath(u"a.xlsx"_s));
    sheet.setCell(1, 1, 2);
    EXPECT_THROW(book.SaveAs(folder.filePath(u"none/a.xlsx"_s)), runtime::Error);
    EXPECT_FALSE(book.Saved());
    EXPECT_EQ(book.path(), folder.filePath(u"a.xlsx"_s));
}

TEST_F(WorkbookTest, SizesOutOfReachAreRefused)
{
    EXPECT_EQ(errorOf([&] { sheet.setColumnWidth(1, 1, 256); }),
              u"列宽应在 0 到 255 个字符之间，不能是 256。"_s);
    EXPECT_EQ(errorOf([&] { sheet.setRowHeight(1, -2); }),
              u"行高应在 0 到 409 磅之间，不能是 -2。"_s);
}

TEST_F(WorkbookTest, TheLatestWidthOfAColumnStands)
{
    sheet.setColumnWidth(1, 35, 4);
    sheet.setColumnWidth(4, 4, 5.75);
    sheet.setColumnWidth(7, 7, 0);
    EXPECT_EQ(sheet.geometry().shownColumnWidth(1), 4);
    EXPECT_EQ(sheet.geometry().shownColumnWidth(4), 5.75);
    EXPECT_EQ(sheet.geometry().shownColumnWidth(7), 0);
    EXPECT_EQ(sheet.geometry().shownColumnWidth(36), excel::SheetGeometry::standardColumnWidth);
    EXPECT_EQ(sheet.geometry().columnLeft(3), 2 * 37 * 0.75);
}

TEST_F(WorkbookTest, ARowIsAsHighAsItsTextsNeed)
{
    sheet.setCellText(2, 1, u"语文\n参试/缺考/总计"_s);
    sheet.setCellText(3, 1, u"考试人数"_s);
    sheet.Range(3, 1, 3, 1).setFontSize(22);
    sheet.setRowState(4, excel::RowState::Hidden);
    sheet.setRowHeight(5, 40);
    EXPECT_TRUE(sheet.format(2, 1).wrapText);
    // 14 characters wide in a column of 8: the second line takes two.
    const double heights[] = {13.5, 40.5, 27, 0, 40, 13.5};
    double top = 0;
    for (int row = 1; row <= 6; ++row) {
        EXPECT_EQ(sheet.geometry().shownRowHeight(row), heights[row - 1]) << row;
        EXPECT_EQ(sheet.geometry().rowTop(row), top) << row;
        top += heights[row - 1];
    }
}

TEST_F(WorkbookTest, APageBreakBeyondWhatFilesTakeIsRefused)
{
    const int last = excel::Worksheet::mostPageBreaks + 1;
    for (int row = 2; row <= last; ++row)
        sheet.addPageBreak(row);
    EXPECT_EQ(errorOf([&] { sheet.addPageBreak(2000); }),
              u"一个工作表最多有 1023 个分页符，不能在第 2000 行之上再加。"_s);
    sheet.addPageBreak(last); // which is there
    EXPECT_EQ(sheet.pageBreaks().size(), 1023u);
}

TEST_F(WorkbookTest, PageBreaksAreKeptInOrderOnce)
{
    for (const int row : {62, 31, 62, 1})
        sheet.addPageBreak(row);
    EXPECT_EQ(sheet.pageBreaks(), (std::vector<int>{31, 62}));
}

TEST_F(WorkbookTest, APictureKeepsACopyOfItsFile)
{
    const BookFolder folder;
    const QString path = folder.write(u"a.png"_s, samplePng());
    excel::Picture& picture = sheet.insertPicture(path);
    QFile::remove(path);
    EXPECT_EQ(picture.bytes(), samplePng());
    EXPECT_EQ(picture.Width(), 1.5);
    EXPECT_EQ(picture.Height(), 0.75);
    EXPECT_EQ(errorOf([&] { sheet.insertPicture(path); }), u"无法读取图片文件 "_s + path + u"。"_s);
    const QString text = folder.write(u"a.bmp"_s, "BM and no more");
    EXPECT_EQ(errorOf([&] { sheet.insertPicture(text); }),
              text + u" 不是可以插入的图片（PNG、JPEG 或 BMP）。"_s);
    EXPECT_EQ(sheet.drawings().size(), 1u);
}

TEST(OpenExcel, TakesTheLatestInstanceThatStillAnswers)
{
    excel::Applications applications;
    excel::Application& first = excel::OpenExcel(applications);
    EXPECT_TRUE(first.Visible());
    EXPECT_EQ(&excel::OpenExcel(applications), &first);
    applications.push_back(std::make_unique<excel::Application>());
    excel::Application& second = *applications.back();
    EXPECT_EQ(&excel::OpenExcel(applications), &second);
    EXPECT_FALSE(second.Visible());
    second.Quit();
    EXPECT_EQ(&excel::OpenExcel(applications), &first);
    first.Quit();
    excel::Application& third = excel::OpenExcel(applications);
    EXPECT_TRUE(third.isRunning());
    EXPECT_TRUE(third.Visible());
    EXPECT_EQ(applications.size(), 3u);
}

TEST(ApplicationObserver, HearsOfShowingOpeningAndQuitting)
{
    QStringList heard;
    const excel::Application::Observer former =
        excel::Application::observe([&](excel::Application& changed) {
            heard.append(changed.isRunning() ? u"%1"_s.arg(changed.Workbooks().Count())
                                             : u"quit"_s);
        });
    {
        excel::Application application;
        application.setVisible(true);
        application.Workbooks().Add();
        application.Workbooks().Open(fixture(u"scores.xlsx"_s));
        application.Quit();
        EXPECT_EQ(heard.last(), u"quit"_s);
    }
    excel::Application::observe(former);
    EXPECT_EQ(heard, (QStringList{u"0"_s, u"1"_s, u"2"_s, u"quit"_s}));
}

TEST(ApplicationLengths, AreInPoints)
{
    EXPECT_NEAR(excel::Application::InchesToPoints(0.393700787401575), 72 / 2.54, 1e-9);
}
