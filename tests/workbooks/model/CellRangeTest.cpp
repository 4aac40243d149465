#include "workbooks/model/CellRange.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

using namespace Qt::StringLiterals;

TEST(CellRange, ColumnsAreNamedByLetters)
{
    const struct
    {
        int column;
        QString name;
    } rows[] = {{1, u"A"_s},    {26, u"Z"_s},    {27, u"AA"_s},
                {702, u"ZZ"_s}, {703, u"AAA"_s}, {excel::lastGridColumn, u"XFD"_s}};
    for (const auto& row : rows)
        EXPECT_EQ(excel::columnName(row.column), row.name);
}
