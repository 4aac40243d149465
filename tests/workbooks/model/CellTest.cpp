#include "workbooks/model/Cell.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

using namespace Qt::StringLiterals;
using excel::Cell;
using runtime::Value;

TEST(Cell, GivesBackJustWhatWasPutIn)
{
    const Value values[] = {
        {},
        7,
        qint64(-9007199254740993),
        qint64(9223372036854775807),
        89.7F,
        66.66666666666667,
        true,
        false,
        QDateTime(QDate(2009, 7, 31), QTime(8, 30), Qt::UTC),
        u"张三"_s,
        u""_s,
        Value::error(u"#N/A"_s),
        QByteArray("\0\1", 2),
    };
    excel::CellStore store;
    Cell cell(16384);
    for (const Value& value : values) {
        cell.setValue(value, store);
        EXPECT_EQ(cell.value(), value) << value.text().toStdString();
        EXPECT_EQ(cell.kind(), value.kind());
        EXPECT_EQ(cell.isNull(), value.isNull());
    }
    EXPECT_EQ(cell.column(), 16384);
}

TEST(Cell, EqualTextsAreKeptOnce)
{
    excel::CellStore store;
    EXPECT_EQ(store.keep(u"1班"_s), store.keep(QString(u"1"_s + u"班"_s)));
    EXPECT_NE(store.keep(u"1班"_s), store.keep(u"2班"_s));
}

TEST(Cell, IsSmall)
{
    EXPECT_EQ(sizeof(Cell), 16u);
}
