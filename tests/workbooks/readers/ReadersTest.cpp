#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"

using namespace Qt::StringLiterals;
using excel::CellRange;
using excel::Visibility;
using excel::Worksheet;

namespace {

/// What a workbook holds does not depend on the kind of its file, which the ending tells.
class Readers : public testing::TestWithParam<const char*>
{
protected:
    static std::unique_ptr<excel::Workbook> read(const QString& name)
    {
        return excel::readWorkbook(fixture(name + u'.' + QLatin1String(GetParam())));
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, Readers, testing::Values("xls", "xlsx"),
                         [](const auto& kind) { return kind.param; });

TEST_P(Readers, KeepsWhatAWindowShows)
{
    const auto book = read(u"kinds-of-cells"_s);
    const Worksheet& sheet = book->Worksheets().Item(1);
    EXPECT_EQ(sheet.merges().all(), std::vector<CellRange>{(CellRange{5, 1, 6, 3})});
    EXPECT_TRUE(sheet.geometry().isRowHidden(8));
    EXPECT_FALSE(sheet.geometry().isRowHidden(7));
    EXPECT_EQ(sheet.geometry().rowHeight(7), 30);
    ASSERT_EQ(sheet.geometry().columns().size(), 2u);
    EXPECT_EQ(sheet.geometry().columns()[0].first, 2);
    EXPECT_EQ(sheet.geometry().columns()[0].last, 3);
    EXPECT_NEAR(sheet.geometry().columns()[0].width, 20.1, 0.1);
    EXPECT_TRUE(sheet.geometry().columns()[1].hidden);
    EXPECT_EQ(sheet.visibility(), Visibility::Visible);
    EXPECT_EQ(book->Worksheets().Item(2).visibility(), Visibility::Hidden);
    EXPECT_EQ(cellsOf(book->Worksheets().Item(3)), QString());
}

TEST_P(Readers, AFilteredSheetIsReadWholeAndTheFilterCanBeSwitchedOff)
{
    const auto book = read(u"filtered"_s);
    Worksheet& sheet = book->Worksheets().Item(1);
    EXPECT_EQ(sheet.Cells(3, 1).text(), u"理"_s);
    EXPECT_TRUE(sheet.AutoFilterMode());
    EXPECT_TRUE(sheet.geometry().isRowHidden(3));
    sheet.AutoFilter();
    EXPECT_FALSE(sheet.AutoFilterMode());
    EXPECT_FALSE(sheet.geometry().isRowHidden(3));
    EXPECT_TRUE(sheet.geometry().isRowHidden(6));
}

TEST_P(Readers, CountsDatesFrom1904IfTheWorkbookDoes)
{
    const auto book = read(u"dates-from-1904"_s);
    EXPECT_EQ(cellsOf(book->Worksheets().Item(1)), u"1,1 Date 2009-07-31\n"_s);
}
