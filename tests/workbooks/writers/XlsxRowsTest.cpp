#include "workbooks/writers/XlsxRows.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>

#include "support/PrintQString.h"

using namespace Qt::StringLiterals;
using excel::RowState;

namespace {

struct FreeBook
{
    void operator()(lxw_workbook* book) const { lxw_workbook_free(book); }
};

class XlsxRowsTest : public testing::Test
{
protected:
    std::string written()
    {
        excel::ScratchText text = rows.take();
        std::string all(text.size(), '\0');
        EXPECT_TRUE(text.rewind());
        EXPECT_EQ(text.read(all.data(), all.size()), all.size());
        return all;
    }

    std::unique_ptr<lxw_workbook, FreeBook> book{workbook_new("unused.xlsx")};
    lxw_worksheet* target = workbook_add_worksheet(book.get(), nullptr);
    excel::SharedTexts texts{book.get()};
    excel::XlsxRows rows{target, texts};
};

} // namespace

TEST_F(XlsxRowsTest, NumbersAreWrittenWithSixteenDigits)
{
    const double numbers[] = {0,    -0.0, 7,    -1,      85.5,  66.66666666666667, 1.0 / 3, 1e15,
                              1e16, 1e20, 1e-7, 1.5e300, 5e-324};
    rows.beginRow(1);
    std::string expected = "<row r=\"1\" spans=\"1:13\">";
    char letter = 'A';
    for (const double number : numbers) {
        rows.addNumber(letter - 'A' + 1, 0, number);
        std::array<char, 64> cell{};
        std::snprintf(cell.data(), cell.size(), "<c r=\"%c1\"><v>%.16G</v></c>", letter++, number);
        expected += cell.data();
    }
    EXPECT_EQ(written(), expected + "</row>");
}

TEST_F(XlsxRowsTest, RowsOfOneBlockHaveTheirSpanInCommon)
{
    rows.beginRow(1);
    rows.addBlank(3, 4);
    rows.beginRow(2);
    rows.beginRow(16, 30, RowState::Shown);
    rows.addTruth(28, 0, true);
    rows.beginRow(17, 13.5, RowState::Hidden);
    EXPECT_EQ(written(),
              "<row r=\"1\" spans=\"3:28\"><c r=\"C1\" s=\"4\"/></row>"
              "<row r=\"16\" spans=\"3:28\" ht=\"30\" customHeight=\"1\">"
              "<c r=\"AB16\" t=\"b\"><v>1</v></c></row>"
              "<row r=\"17\" spans=\"1:1\" ht=\"13.5\" hidden=\"1\" customHeight=\"1\"/>");
    EXPECT_EQ(target->dim_rowmax, 16u);
    EXPECT_EQ(target->dim_colmax, 27u);
}

TEST_F(XlsxRowsTest, EqualTextsHaveOneNumberAndAreCounted)
{
    rows.beginRow(1);
    for (const QString& text : {u"文"_s, u"理"_s, u"文"_s})
        rows.addText(1, 0, text);
    EXPECT_EQ(book->sst->unique_count, 2u);
    EXPECT_EQ(book->sst->string_count, 3u);
}
