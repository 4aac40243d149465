#include "scoring/RowOrder.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

#include <gmock/gmock.h>

#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Value;
using scoring::ExamTable;
using scoring::TableColumn;
using support::TestLibrary;
using testing::ElementsAre;

/// An exam of one column of 64-bit numbers.
class RowOrder : public testing::Test
{
protected:
    RowOrder() { test.execute(u"ALTER TABLE 成绩表 add COLUMN 数 Double"_s); }

    std::vector<size_t> order(const std::vector<Value>& numbers)
    {
        for (const Value& number : numbers)
            test.addScores(u"期末"_s, 1, 1, {{u"数"_s, number}});
        ExamTable table(test.scores.Conn, u"期末"_s, u"理"_s);
        const TableColumn* column = table.column(u"数"_s);
        EXPECT_EQ(table.rowCount(), numbers.size());
        return scoring::descendingRows(*column, table.rowCount());
    }

    void SetUp() override { test.addStudent(1, 1, u"甲"_s, u"理"_s); }

    TestLibrary test{{u"语文"_s}};
};

TEST_F(RowOrder, LargestFirstNullLastAndEqualOnesAsTheyCome)
{
    EXPECT_THAT(order({Value(), 3, 7.5, Value(), 3, 7.5}), ElementsAre(2, 5, 1, 4, 0, 3));
}

TEST_F(RowOrder, NegativeNumbersAndBothZeros)
{
    EXPECT_THAT(order({-1, 0.0, -0.5, -0.0, -2, 0.25}), ElementsAre(5, 1, 3, 2, 0, 4));
}

TEST_F(RowOrder, NoRows)
{
    EXPECT_THAT(order({}), ElementsAre());
}

TEST_F(RowOrder, AnyNumbersComeAsAStableSortPutsThem)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> exponent(-300, 300);
    std::vector<Value> numbers;
    std::vector<double> plain;
    for (int i = 0; i < 400; ++i) {
        const double number = (i % 2 == 0 ? 1 : -1) * std::pow(10, exponent(random));
        plain.push_back(i % 5 == 0 ? double(i % 7) : number);
        numbers.emplace_back(plain.back());
    }
    std::vector<size_t> expected(plain.size());
    std::iota(expected.begin(), expected.end(), size_t(0));
    std::stable_sort(expected.begin(), expected.end(),
                     [&](size_t a, size_t b) { return plain[a] > plain[b]; });
    EXPECT_EQ(order(numbers), expected);
}

} // namespace
