#include <bit>

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "library/LibraryShape.h"
#include "oldlibraries/Converting.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"

using namespace Qt::StringLiterals;
using database::SqlPiece;
using database::sqlWith;
using runtime::Value;

namespace {

class ConvertedSample : public tests::Converting, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        const QString name = QString::fromLatin1(GetParam());
        useSample(name + u".CJK"_s);
        bytes = support::read(request.oldPath);
        content = QJsonDocument::fromJson(support::read(support::oldSamplePath(name + u".json"_s)));
        report = convert();
        library.Open(request.newPath, library::libraryShape());
    }

    QJsonArray tables() const { return content[u"tables"].toArray(); }

    QByteArray bytes;
    QJsonDocument content;
    std::optional<oldlibraries::ConversionReport> report;
    database::Connection library;
};

QStringList names(const QJsonArray& things)
{
    QStringList names;
    for (const QJsonValue& thing : things)
        names.append(thing[u"name"].toString());
    return names;
}

/// The cell as the sample's description writes it.
QJsonValue described(const Value& value, const QJsonValue& column)
{
    const QString type = column[u"type"].toString();
    if (value.isNull())
        return QJsonValue::Null;
    if (type == "OLE"_L1) {
        const QByteArray hash =
            QCryptographicHash::hash(value.toBytes(), QCryptographicHash::Sha256);
        return QJsonObject{{u"sha256"_s, QString::fromLatin1(hash.toHex())},
                           {u"length"_s, value.toBytes().size()}};
    }
    if (type == "Boolean"_L1)
        return value.toDouble() != 0;
    if (value.isNumber())
        return value.toDouble();
    return value.text();
}

/// A Single is described by the shortest text of its 32 bits.
QJsonValue expected(const QJsonValue& cell, const QJsonValue& column)
{
    if (column[u"type"].toString() == "Single"_L1 && cell.isString())
        return double(cell.toString().toFloat());
    return cell;
}

void expectRow(const database::Statement& row, const QJsonArray& cells, const QJsonArray& columns)
{
    for (qsizetype i = 0; i < columns.size(); ++i)
        EXPECT_EQ(described(row.value(int(i)), columns[i]), expected(cells[i], columns[i]))
            << columns[i][u"name"].toString().toStdString();
}

} // namespace

TEST_P(ConvertedSample, HasEveryCellAsItStood)
{
    for (const QJsonValue& table : tables()) {
        const QString name = table[u"name"].toString();
        SCOPED_TRACE(name.toStdString());
        const QJsonArray columns = table[u"columns"].toArray();
        database::Statement rows(
            library, sqlWith(u"select %1 from %2 order by rowid"_s,
                             {SqlPiece::names(names(columns)), SqlPiece::names({name})}));
        const QJsonArray expectedRows = table[u"rows"].toArray();
        for (const QJsonValue& cells : expectedRows) {
            ASSERT_TRUE(rows.step());
            expectRow(rows, cells.toArray(), columns);
        }
        EXPECT_FALSE(rows.step());
    }
}

TEST_P(ConvertedSample, HasTablesAndColumnsInTheirOrder)
{
    database::Statement made(library, u"select name from sqlite_master where type='table' and "
                                      "name<>'sqlite_sequence' order by rowid"_s);
    for (const QJsonValue& table : tables()) {
        ASSERT_TRUE(made.step());
        EXPECT_EQ(made.text(0), table[u"name"].toString());
        database::Statement columns(library,
                                    u"select name from pragma_table_info(?1) order by cid"_s);
        columns.bind({made.text(0)});
        for (const QString& name : names(table[u"columns"].toArray())) {
            ASSERT_TRUE(columns.step());
            EXPECT_EQ(columns.text(0), name);
        }
    }
}

TEST_P(ConvertedSample, IsReportedWithTheRowsOfItsTables)
{
    ASSERT_TRUE(report);
    EXPECT_EQ(report->oldPath, request.oldPath);
    EXPECT_EQ(report->newPath, request.newPath);
    ASSERT_EQ(qsizetype(report->tables.size()), tables().size());
    for (qsizetype i = 0; i < tables().size(); ++i) {
        EXPECT_EQ(report->tables[size_t(i)].name, tables()[i][u"name"].toString());
        EXPECT_EQ(report->tables[size_t(i)].rows, tables()[i][u"rows"].toArray().size());
    }
}

TEST_P(ConvertedSample, LeavesTheOldFileAndNothingElse)
{
    EXPECT_EQ(support::read(request.oldPath), bytes);
    EXPECT_EQ(files(), (QStringList{u"new.CJK"_s, u"old.CJK"_s}));
}

INSTANTIATE_TEST_SUITE_P(, ConvertedSample,
                         testing::Values("small-two-streams", "one-stream", "wide", "photos"));
