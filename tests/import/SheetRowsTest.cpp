#include "import/SheetRows.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "workbooks/model/Workbook.h"

namespace {

using namespace Qt::StringLiterals;
using importing::SheetRows;
using importing::TextCounts;
using runtime::Value;

/// A sheet with 语文 in column 4.
class SheetRowsTest : public testing::Test
{
protected:
    /// Puts these rows below the headings.
    void fill(const std::vector<std::vector<Value>>& rows)
    {
        int row = 1;
        for (const std::vector<Value>& cells : rows) {
            ++row;
            int column = 0;
            for (const Value& cell : cells)
                sheet.setCell(row, ++column, cell);
        }
    }

    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"一年级"_s);
    const std::vector<importing::ImportSubject> subjects{{u"语文"_s, 150, 4}};
};

TEST_F(SheetRowsTest, TheyEndAtTheFirstRowWithoutANumber)
{
    fill({{1, 1, u"甲"_s, 90}, {1, {}, u"乙"_s, 80}, {1, 3, u"丙"_s, 70}, {}, {{}, {}, {}, 60}});
    const SheetRows rows(sheet);
    EXPECT_EQ(rows.end(), 3);
    EXPECT_EQ(rows.rowsLeft(subjects).size(), 3U)
        << "the row that ends the sheet holds a student too";
    ASSERT_EQ(rows.students().size(), 1U);
    EXPECT_EQ(rows.students()[0].name, u"甲"_s);
}

TEST_F(SheetRowsTest, NothingIsLeftBehindTheLastRow)
{
    fill({{1, 1, u"甲"_s, 90}});
    sheet.setCell(9, 8, u"备注"_s);
    EXPECT_EQ(SheetRows(sheet).rowsLeft(subjects).size(), 0U);
}

TEST_F(SheetRowsTest, StudentsAreReadAsNumbersAndATrimmedName)
{
    fill({{u"12班"_s, 2.000000000000004, u"  王 芳 "_s, 90}});
    const importing::SheetStudent student = SheetRows(sheet).students().at(0);
    EXPECT_EQ(student.classNumber, 12);
    EXPECT_EQ(student.number, 2);
    EXPECT_EQ(student.name, u"王 芳"_s);
}

TEST_F(SheetRowsTest, ClassesComeInTheOrderOfTheSheet)
{
    fill({{3, 1, u"甲"_s}, {1, 1, u"乙"_s}, {u"3班"_s, 2, u"丙"_s}, {2, 1, u"丁"_s}});
    EXPECT_EQ(SheetRows(sheet).classes(), (std::vector<double>{3, 1, 2}));
}

TEST_F(SheetRowsTest, TextsThatAreNoScoresAreCounted)
{
    const std::vector<Value> cells{90,
                                   u"缺考"_s,
                                   u"作弊"_s,
                                   u"95"_s,
                                   u" 8 5 "_s,
                                   u"-3.5"_s,
                                   u"1e2"_s,
                                   Value(),
                                   u""_s,
                                   u"abc"_s,
                                   u"abc"_s,
                                   u" 缺考"_s,
                                   u"  "_s,
                                   u"87分"_s,
                                   u"1o5"_s,
                                   u"９０"_s,
                                   Value::error(u"#N/A"_s)};
    int row = 1;
    for (const Value& cell : cells)
        sheet.setCell(++row, 4, cell);
    for (int number = 1; number < row; ++number)
        sheet.setCell(number + 1, 2, number);
    const importing::OddTexts odd = SheetRows(sheet).oddTexts(subjects);
    EXPECT_EQ(odd.withoutNumber,
              (TextCounts{{u"abc"_s, 2}, {u" 缺考"_s, 1}, {u"  "_s, 1}, {u"９０"_s, 1}}));
    EXPECT_EQ(odd.withNumber, (TextCounts{{u"87分"_s, 1}, {u"1o5"_s, 1}}));
}

TEST_F(SheetRowsTest, TextsOfOtherColumnsAndBehindTheEndAreNotCounted)
{
    fill({{1, 1, u"甲"_s, 90, u"转学"_s}, {1, {}, u"乙"_s, u"abc"_s}});
    const importing::OddTexts odd = SheetRows(sheet).oddTexts(subjects);
    EXPECT_TRUE(odd.withoutNumber.isEmpty());
    EXPECT_TRUE(odd.withNumber.isEmpty());
}

} // namespace
