#include <bit>

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "oldlibraries/OldCells.h"
#include "support/OldSamples.h"
#include "support/PrintQString.h"

using namespace Qt::StringLiterals;
using oldlibraries::OldColumn;
using oldlibraries::OldDatabase;
using oldlibraries::OldTable;
using oldlibraries::OldType;
using runtime::Value;

namespace {

class OldSample : public testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        const QString name = QString::fromLatin1(GetParam());
        path = support::oldSamplePath(name + u".CJK"_s);
        content = QJsonDocument::fromJson(support::read(support::oldSamplePath(name + u".json"_s)));
    }

    QJsonArray tables() const { return content[u"tables"].toArray(); }

    QString path;
    QJsonDocument content;
};

QString typeName(const OldColumn& column)
{
    switch (column.type) {
    case OldType::Boolean:
        return u"Boolean"_s;
    case OldType::Integer:
        return u"Integer"_s;
    case OldType::Long:
        return column.isAutoNumber ? u"AutoNumber"_s : u"Long"_s;
    case OldType::Single:
        return u"Single"_s;
    case OldType::Double:
        return u"Double"_s;
    case OldType::Text:
        return u"Text(%1)"_s.arg(column.length);
    case OldType::LongBinary:
        return u"OLE"_s;
    case OldType::Memo:
        return u"Memo"_s;
    default:
        return u"another"_s;
    }
}

/// What a cell has to be; a picture is given by its digest.
Value expected(const QJsonValue& cell, OldType type)
{
    if (cell.isNull())
        return {};
    switch (type) {
    case OldType::Boolean:
        return cell.toBool();
    case OldType::Integer:
    case OldType::Long:
        return cell.toInteger();
    case OldType::Single:
        return double(cell.toString().toFloat());
    case OldType::Double:
        return cell.toDouble();
    case OldType::LongBinary:
        return u"%1 %2"_s.arg(cell[u"sha256"].toString()).arg(cell[u"length"].toInteger());
    default:
        return cell.toString();
    }
}

Value described(const Value& value)
{
    if (value.kind() != Value::Kind::Binary)
        return value;
    const QByteArray digest = QCryptographicHash::hash(value.toBytes(), QCryptographicHash::Sha256);
    return u"%1 %2"_s.arg(QString::fromLatin1(digest.toHex())).arg(value.toBytes().size());
}

void expectTable(OldDatabase& database, const OldTable& table, const QJsonValue& content)
{
    SCOPED_TRACE(table.name.toStdString());
    const QJsonArray rows = content[u"rows"].toArray();
    const tests::OldCells cells = tests::oldCells(database.file(), table);
    ASSERT_EQ(qsizetype(cells.size()), rows.size());
    EXPECT_EQ(qsizetype(table.rowCount), rows.size());
    for (size_t row = 0; row < cells.size(); ++row) {
        for (size_t i = 0; i < table.columns.size(); ++i) {
            const Value value = expected(rows[qsizetype(row)][qsizetype(i)], table.columns[i].type);
            EXPECT_EQ(described(cells[row][i]), value)
                << "row " << row << ", " << table.columns[i].name.toStdString();
        }
    }
}

} // namespace

TEST_P(OldSample, HasItsTablesAndColumnsInTheirOrder)
{
    QStringList expectedColumns;
    for (const QJsonValue& table : tables()) {
        for (const QJsonValue& column : table[u"columns"].toArray())
            expectedColumns.append(table[u"name"].toString() + u' ' + column[u"name"].toString()
                                   + u' ' + column[u"type"].toString());
    }
    QStringList columns;
    OldDatabase database(path);
    for (const OldTable& table : database.readTables()) {
        for (const OldColumn& column : table.columns)
            columns.append(table.name + u' ' + column.name + u' ' + typeName(column));
    }
    EXPECT_EQ(columns, expectedColumns);
}

TEST_P(OldSample, HasEveryCell)
{
    OldDatabase database(path);
    const std::vector<OldTable> found = database.readTables();
    ASSERT_EQ(qsizetype(found.size()), tables().size());
    for (size_t i = 0; i < found.size(); ++i)
        expectTable(database, found[i], tables()[qsizetype(i)]);
    database.file().checkUnchanged();
}

TEST_P(OldSample, CanBeReadTwice)
{
    OldDatabase database(path);
    for (const OldTable& table : database.readTables())
        EXPECT_EQ(tests::oldCells(database.file(), table), tests::oldCells(database.file(), table));
}

INSTANTIATE_TEST_SUITE_P(, OldSample,
                         testing::Values("small-two-streams", "one-stream", "wide", "photos"));
