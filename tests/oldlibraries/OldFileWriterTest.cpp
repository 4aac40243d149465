#include "support/OldFileWriter.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "oldlibraries/OldCells.h"
#include "oldlibraries/OldFileError.h"
#include "support/PrintQString.h"

// What the writer of tests makes is what the reader of the product reads.

using oldlibraries::OldType;
using runtime::Value;
using support::OldFileWriter;

namespace {

using Rows = tests::OldCells;

class OldFileWriterTest : public testing::Test
{
protected:
    QString path() const { return m_folder.filePath(u"旧.CJK"_s); }

    Rows readBack(const QString& tableName)
    {
        oldlibraries::OldDatabase database(path());
        const oldlibraries::OldTable table = tests::oldTable(database, tableName);
        Rows found = tests::oldCells(database.file(), table);
        EXPECT_EQ(found.size(), table.rowCount);
        return found;
    }

    QStringList tables()
    {
        QStringList names;
        for (const oldlibraries::OldTable& table : oldlibraries::OldDatabase(path()).readTables())
            names.append(table.name);
        return names;
    }

private:
    QTemporaryDir m_folder;
};

QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 random = 1;
    for (char& byte : bytes) {
        random = random * 1664525 + 1013904223;
        byte = char(random >> 24);
    }
    return bytes;
}

} // namespace

TEST_F(OldFileWriterTest, ColumnsOfAllTypesHaveTheirValuesAndNone)
{
    OldFileWriter file(path());
    file.addTable(u"各种"_s, {{u"真"_s, OldType::Boolean},
                              {u"字节"_s, OldType::Byte},
                              {u"短"_s, OldType::Integer},
                              {u"长"_s, OldType::Long},
                              {u"钱"_s, OldType::Currency},
                              {u"单"_s, OldType::Single},
                              {u"双"_s, OldType::Double},
                              {u"日"_s, OldType::DateTime},
                              {u"节"_s, OldType::Binary, 10},
                              {u"文"_s, OldType::Text},
                              {u"片"_s, OldType::LongBinary},
                              {u"备"_s, OldType::Memo},
                              {u"号"_s, OldType::Guid},
                              {u"数"_s, OldType::Decimal, 0, 3}});
    const QString guid = u"{01234567-89ab-cdef-0123-456789abcdef}"_s;
    file.addRow({true, 255, -32768, -2147483647, -1.25, 88.1F, 0.1, 39814.375,
                 QByteArray("\0\xFF", 2), u"王𬭎"_s, QByteArray("JPEG"), u"行一\r\n行二"_s, guid,
                 u"-12345678901234.567"_s});
    file.addRow({false, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}});
    file.addRow({false, 0, 0, 0, 0.0, 0.0F, 0.0, QDateTime(QDate(2009, 1, 1), QTime(9, 0)),
                 QByteArray(""), u""_s, QByteArray(""), u""_s, guid, u"0.000"_s});
    file.save();
    EXPECT_EQ(readBack(u"各种"_s),
              (Rows{{true, 255, -32768, -2147483647, -1.25, double(88.1F), 0.1, 39814.375,
                     QByteArray("\0\xFF", 2), u"王𬭎"_s, QByteArray("JPEG"), u"行一\r\n行二"_s,
                     guid, u"-12345678901234.567"_s},
                    {false, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}},
                    {false, 0, 0, 0, 0.0, 0.0, 0.0, 39814.375, QByteArray(""), u""_s,
                     QByteArray(""), u""_s, guid, u"0.000"_s}}));
}

TEST_F(OldFileWriterTest, TextsAreReadWhateverTheirForm)
{
    const QStringList texts{u""_s,     u"A"_s,       u"é1"_s,      u"3班b"_s,
                            u"一班"_s, u"王𬭎"_s, u"\u4E00A"_s, QString(50, u'班')};
    OldFileWriter file(path());
    file.addTable(u"文"_s, {{u"文"_s, OldType::Text}, {u"备"_s, OldType::Memo}});
    Rows expected;
    for (const support::OldTextForm form :
         {support::OldTextForm::Plain, support::OldTextForm::Compressed,
          support::OldTextForm::Mixed}) {
        file.setTextForm(form);
        for (const QString& text : texts) {
            file.addRow({text, text});
            expected.push_back({text, text});
        }
    }
    file.save();
    EXPECT_EQ(readBack(u"文"_s), expected);
}

TEST_F(OldFileWriterTest, LongValuesAreReadFromWhereverTheyStand)
{
    using Form = OldFileWriter::LongForm;
    OldFileWriter file(path());
    file.addTable(u"长"_s, {{u"备"_s, OldType::Memo}, {u"片"_s, OldType::LongBinary}});
    Rows expected;
    const auto add = [&](Form form, qsizetype size) {
        file.setLongForm(form);
        expected.push_back({QString(size / 2, u'班'), noise(size)});
        file.addRow(expected.back());
    };
    for (const Form form : {Form::InRow, Form::OnePiece, Form::Chain, Form::Usual}) {
        for (const qsizetype size : {0, 1, 64, 1500})
            add(form, size);
    }
    for (const qsizetype size : {4072, 4073, 4080, 8144, 8145, 100'000})
        add(Form::Chain, size);
    add(Form::Usual, 100'000);
    file.save();
    EXPECT_EQ(readBack(u"长"_s), expected);
}

TEST_F(OldFileWriterTest, DeletedRowsAreGoneAndMovedOnesKeepTheirPlace)
{
    using Kind = OldFileWriter::RowKind;
    OldFileWriter file(path());
    file.addTable(u"行"_s, {{u"ID"_s, OldType::Long}, {u"文"_s, OldType::Text}});
    Rows expected;
    for (int i = 0; i < 1000; ++i) {
        const std::vector<Value> row{i, QString(i % 50, u'班')};
        const Kind kind = i % 3 == 0 ? Kind::Deleted : i % 7 == 0 ? Kind::Moved : Kind::Stored;
        file.addRow(row, kind);
        if (kind != Kind::Deleted)
            expected.push_back(row);
    }
    file.save();
    EXPECT_EQ(readBack(u"行"_s), expected);
}

TEST_F(OldFileWriterTest, RowsAheadOfAColumnAreNullInIt)
{
    OldFileWriter file(path());
    file.addTable(u"列"_s, {{u"数"_s, OldType::Single}, {u"文"_s, OldType::Text}});
    file.addRow({1.5, u"甲"_s});
    file.addColumn({u"新数"_s, OldType::Long});
    file.addColumn({u"新文"_s, OldType::Text});
    file.addColumn({u"新真"_s, OldType::Boolean});
    file.addRow({2.5, u"乙"_s, 7, u"丙"_s, true});
    file.dropColumn(u"数"_s);
    file.dropColumn(u"文"_s);
    file.addRow({8, u"丁"_s, false});
    file.save();
    EXPECT_EQ(readBack(u"列"_s), (Rows{{{}, {}, false}, {7, u"丙"_s, true}, {8, u"丁"_s, false}}));
}

TEST_F(OldFileWriterTest, NumbersMayChangeLengthAndTextsMayBeFixed)
{
    using Place = support::OldColumnPlan::Place;
    OldFileWriter file(path());
    file.addTable(u"列"_s, {{u"数"_s, OldType::Long, 0, 0, false, Place::Variable},
                            {u"文"_s, OldType::Text, 4, 0, false, Place::Fixed}});
    file.addRow({7, u"甲"_s});
    file.addRow({{}, {}});
    file.save();
    EXPECT_EQ(readBack(u"列"_s), (Rows{{7, u"甲   "_s}, {{}, {}}}));
}

TEST_F(OldFileWriterTest, ADefinitionGoesOverSeveralPages)
{
    std::vector<support::OldColumnPlan> columns;
    for (int i = 0; i < 255; ++i)
        columns.push_back({u"列%1"_s.arg(i).repeated(5), OldType::Long});
    std::vector<Value> row(columns.size());
    for (int i = 1; i < 255; i += 2)
        row[size_t(i)] = i;
    OldFileWriter file(path());
    file.addTable(u"宽"_s, columns);
    file.addRow(row);
    file.save();
    EXPECT_EQ(readBack(u"宽"_s), Rows{row});
}

TEST_F(OldFileWriterTest, TheMapOfPagesIsReadInBothForms)
{
    for (const support::OldMapForm form : {support::OldMapForm::Usual, support::OldMapForm::Bits,
                                           support::OldMapForm::PagesOfBits}) {
        OldFileWriter file(path());
        file.setMapForm(form);
        for (const QString& name : {u"空"_s, u"行"_s})
            file.addTable(name, {{u"ID"_s, OldType::Long}, {u"节"_s, OldType::Binary, 255}});
        Rows expected;
        for (int i = 0; i < 10'000; ++i) {
            expected.push_back({i, QByteArray(255, char(i))});
            file.addRow(expected.back());
        }
        file.save();
        EXPECT_EQ(readBack(u"行"_s), expected) << int(form);
        EXPECT_EQ(readBack(u"空"_s), Rows());
    }
}

TEST_F(OldFileWriterTest, OnlyTablesOfUsersAreRead)
{
    OldFileWriter file(path());
    file.addTable(u"信息表"_s, {{u"ID"_s, OldType::Long}});
    file.addTable(u"MSysACEs"_s, {{u"ID"_s, OldType::Long}}, OldFileWriter::TableKind::System);
    file.addObject(u"查询"_s, 5);
    file.addTable(u"it's"_s, {{u"a'b"_s, OldType::Text}});
    file.save();
    EXPECT_EQ(tables(), QStringList({u"信息表"_s, u"it's"_s}));
}

TEST_F(OldFileWriterTest, TheLastNumberIsTheGreatestThatARowHadEvenADeletedOne)
{
    OldFileWriter file(path());
    file.addTable(u"信息表"_s, {{u"ID"_s, OldType::Long, 0, 0, true}});
    file.addRow({5});
    file.addRow({9}, OldFileWriter::RowKind::Deleted);
    file.addRow({7});
    file.save();
    const oldlibraries::OldTable table = oldlibraries::OldDatabase(path()).readTables().front();
    EXPECT_TRUE(table.columns[0].isAutoNumber);
    EXPECT_EQ(table.lastAutoNumber, 9);
}

TEST_F(OldFileWriterTest, APasswordStandsInTheHeader)
{
    OldFileWriter file(path(), {u"密码 1'"_s});
    file.save();
    const oldlibraries::OldDatabase database(path());
    EXPECT_TRUE(database.hasPassword());
    EXPECT_TRUE(database.isPassword(u"密码 1'"_s));
    EXPECT_FALSE(database.isPassword(u"密码 1"_s));
}

TEST_F(OldFileWriterTest, EncryptedPagesAndOtherVersionsAreTold)
{
    const auto failureOf = [&](const OldFileWriter::Header& header) {
        OldFileWriter(path(), header).save();
        try {
            oldlibraries::OldDatabase{path()};
        } catch (const oldlibraries::OldFileError& error) {
            return error.failure();
        }
        return oldlibraries::OldFileFailure::Missing;
    };
    EXPECT_EQ(failureOf({u""_s, 0x12345678}), oldlibraries::OldFileFailure::Encrypted);
    EXPECT_EQ(failureOf({u""_s, 0, 2}), oldlibraries::OldFileFailure::OtherVersion);
}
