#include "oldlibraries/HostileOldFile.h"
#include "oldlibraries/Losses.h"

// What a file may hold that no sample has. Some of it is made by changing bytes.

using oldlibraries::Finding;
using oldlibraries::OldObject;
using tests::columnSize;
using tests::definitionHead;
using tests::HostileOldFile;
using tests::OldCells;
using tests::pageSize;

using namespace Qt::StringLiterals;
using oldlibraries::OldDatabase;
using oldlibraries::OldTable;
using oldlibraries::OldType;
using support::OldFileWriter;

namespace {

class OtherOldFile : public HostileOldFile
{
protected:
    void save(OldFileWriter& file)
    {
        file.save();
        load();
    }

    OldCells cells(const QString& table)
    {
        support::write(path(), bytes);
        return tests::oldCells(path(), table);
    }

    QStringList tableNames()
    {
        support::write(path(), bytes);
        QStringList names;
        for (const OldTable& table : OldDatabase(path()).readTables())
            names.append(table.name);
        return names;
    }

    qsizetype columnPlace(int column) const { return definitionHead + column * columnSize; }

    /// Of the table whose definition begins on a page.
    void setObjectFlags(quint32 definitionPage, quint32 flags)
    {
        constexpr qsizetype rowHead = 2;
        constexpr qsizetype flagsPlace = 26;
        OldDatabase database(path());
        const OldTable objects = oldlibraries::readTable(database.file(), 2, u"MSysObjects"_s);
        const quint32 page = oldlibraries::usedPages(database.file(), objects.usedPages).front();
        for (int row = 0; row < u16(page, 12); ++row) {
            const qsizetype begin = rowBegin(page, row) + rowHead;
            if (u32(page, begin) == definitionPage)
                put(page, begin + flagsPlace, flags);
        }
    }
};

} // namespace

TEST_F(OtherOldFile, HasTablesWithoutColumnsOfChangingLengthThatGetSomeLater)
{
    OldFileWriter file(path());
    file.addTable(u"分"_s, {{u"考号"_s, OldType::Double}, {u"及格"_s, OldType::Boolean}});
    for (int i = 0; i < 300; ++i)
        file.addRow({i * 1e10, i % 2 == 0});
    file.addColumn({u"备注"_s, OldType::Text});
    file.addRow({-1.5, true, u"新"_s});
    save(file);
    OldCells expected;
    for (int i = 0; i < 300; ++i)
        expected.push_back({i * 1e10, i % 2 == 0, {}});
    expected.push_back({-1.5, true, u"新"_s});
    EXPECT_EQ(cells(u"分"_s), expected);
}

TEST_F(OtherOldFile, HasRowsOfBooleansAlone)
{
    std::vector<support::OldColumnPlan> columns;
    for (int i = 0; i < 20; ++i)
        columns.push_back({u"列%1"_s.arg(i), OldType::Boolean});
    OldCells expected;
    OldFileWriter file(path());
    file.addTable(u"真假"_s, columns);
    for (int row = 0; row < 50; ++row) {
        std::vector<runtime::Value> values(columns.size(), false);
        for (size_t i = 0; i < columns.size(); ++i) {
            if ((row >> (i % 6) & 1) != 0)
                values[i] = true;
        }
        file.addRow(values);
        expected.push_back(values);
    }
    save(file);
    EXPECT_EQ(cells(u"真假"_s), expected);
}

TEST_F(OtherOldFile, HasTablesWithoutRowsOrWithDeletedOnesAlone)
{
    OldFileWriter file(path());
    file.addTable(u"空"_s, {{u"ID"_s, OldType::Long}});
    file.addTable(u"删"_s, {{u"ID"_s, OldType::Long}});
    for (int i = 0; i < 1000; ++i)
        file.addRow({i}, OldFileWriter::RowKind::Deleted);
    save(file);
    EXPECT_EQ(cells(u"空"_s), OldCells());
    EXPECT_EQ(cells(u"删"_s), OldCells());
}

TEST_F(OtherOldFile, GivesColumnsByTheirNumbersWhateverTheirOrderInTheDefinition)
{
    const qsizetype first = studentsPage() * pageSize + columnPlace(0);
    const QByteArray id = bytes.mid(first, columnSize);
    bytes.replace(first, columnSize, bytes.mid(first + columnSize, columnSize));
    bytes.replace(first + columnSize, columnSize, id);
    const qsizetype names = first + 3 * columnSize;
    const QByteArray idName = bytes.mid(names, 6);
    bytes.remove(names, idName.size());
    bytes.insert(names + idName.size(), idName);
    EXPECT_EQ(cells(u"学生"_s)[2], (std::vector<runtime::Value>{3, u"丙"_s, u"短"_s}));
    OldDatabase database(path());
    EXPECT_EQ(tests::oldTable(database, u"学生"_s).columns.front().name, u"ID"_s);
}

TEST_F(OtherOldFile, SaysWhichNumberItGaveLast)
{
    OldFileWriter file(path());
    file.addTable(u"学生"_s, {{u"ID"_s, OldType::Long, 0, 0, true}});
    for (const int id : {3, 7})
        file.addRow({id});
    file.addRow({9}, OldFileWriter::RowKind::Deleted);
    save(file);
    EXPECT_EQ(students.lastAutoNumber, 9);
    EXPECT_TRUE(students.columns.front().isAutoNumber);
    EXPECT_EQ(cells(u"学生"_s), (OldCells{{3}, {7}}));
}

TEST_F(OtherOldFile, HasMemosThatAreLinks)
{
    char& flags = bytes[studentsPage() * pageSize + columnPlace(2) + 15];
    flags = char(flags | 0x80);
    EXPECT_EQ(cells(u"学生"_s)[2][2], u"短"_s);
}

TEST_F(OtherOldFile, HasMemosOfWhichTheRowHoldsNothing)
{
    OldFileWriter file(path());
    file.addTable(u"学生"_s, {{u"备注"_s, OldType::Text}, {u"照片"_s, OldType::Binary}});
    file.addRow({u""_s, QByteArray("")});
    save(file);
    bytes[studentsPage() * pageSize + columnPlace(0)] = 0x0C;
    bytes[studentsPage() * pageSize + columnPlace(1)] = 0x0B;
    const OldCells found = cells(u"学生"_s);
    EXPECT_EQ(found, (OldCells{{u""_s, QByteArray("")}}));
    EXPECT_FALSE(found[0][0].isNull());
    EXPECT_FALSE(found[0][1].isNull());
}

TEST_F(OtherOldFile, HasLongValuesOnMoreBytesThanTheyTake)
{
    put(rowsPageNumber(), memoPlace(), quint32(5000));
    EXPECT_EQ(cells(u"学生"_s)[0][2], QString(2500, u'班'));
}

TEST_F(OtherOldFile, HasLongValuesThatAreMarkedAsDeletedThoughARowHasThem)
{
    const quint32 page = u32(rowsPageNumber(), memoPlace() + 4) >> 8;
    setEntry(page, 0, quint16(u16(page, 14) | 0x8000));
    EXPECT_EQ(cells(u"学生"_s)[0][2], QString(3000, u'班'));
}

TEST_F(OtherOldFile, ConsistsOfTheShortestLongValuesThatThereAre)
{
    OldFileWriter file(path());
    file.setLongForm(OldFileWriter::LongForm::OnePiece);
    file.addTable(u"学生"_s, {{u"备注"_s, OldType::Memo}});
    const OldCells expected(50'000, {u"好"_s});
    for (const auto& row : expected)
        file.addRow(row);
    save(file);
    EXPECT_EQ(cells(u"学生"_s), expected);
}

TEST_F(OtherOldFile, ConsistsOfRowsThatWereMoved)
{
    OldFileWriter file(path());
    file.addTable(u"学生"_s, {{u"备注"_s, OldType::Text}});
    const OldCells expected(50'000, {u"好"_s});
    for (const auto& row : expected)
        file.addRow(row, OldFileWriter::RowKind::Moved);
    save(file);
    EXPECT_EQ(cells(u"学生"_s), expected);
}

TEST_F(OtherOldFile, GivesALongValueAsOftenAsItIsAskedFor)
{
    OldFileWriter file(path());
    file.addTable(u"学生"_s, {{u"备注"_s, OldType::Memo}, {u"照片"_s, OldType::LongBinary}});
    const QString memo(2000, u'班');
    for (int i = 0; i < 100; ++i)
        file.addRow({memo, QByteArray(20'000, 'a')});
    save(file);
    OldDatabase database(path());
    oldlibraries::OldRows rows(database.file(), students);
    while (rows.next()) {
        for (int times = 0; times < 5; ++times) {
            EXPECT_EQ(rows.text(0), memo);
            EXPECT_EQ(rows.bytes(1).size(), 20'000);
        }
    }
}

TEST_F(OtherOldFile, GivesCurrencyAndDecimalsWithAllDigits)
{
    OldFileWriter file(path());
    file.addTable(u"学生"_s, {{u"钱"_s, OldType::Currency}, {u"数"_s, OldType::Decimal, 0, 28}});
    for (const int units : {1, -1, 0})
        file.addRow({0.25, u"%1"_s.arg(units)});
    save(file);
    const qsizetype money = 2;
    const auto setMoney = [&](int row, qint64 units) {
        put(pages[0], rowBegin(pages[0], row) + money, quint64(units));
    };
    setMoney(0, std::numeric_limits<qint64>::min());
    setMoney(1, std::numeric_limits<qint64>::max());
    const qsizetype largest = pages[0] * pageSize + rowBegin(pages[0], 2) + money + 8 + 1;
    bytes.replace(largest, 16, QByteArray(16, '\xFF'));
    support::write(path(), bytes);
    OldDatabase database(path());
    const OldTable table = tests::oldTable(database, u"学生"_s);
    oldlibraries::OldRows rows(database.file(), table);
    QStringList texts;
    while (rows.next())
        texts.append(rows.text(0) + u' ' + rows.text(1));
    EXPECT_EQ(texts, (QStringList{u"-922337203685477.5808 0.0000000000000000000000000001"_s,
                                  u"922337203685477.5807 -0.0000000000000000000000000001"_s,
                                  u"0.2500 34028236692.0938463463374607431768211455"_s}));
}

TEST_F(OtherOldFile, HasColumnsOfATypeThatNobodyKnows)
{
    bytes[studentsPage() * pageSize + columnPlace(0)] = 0x12; // at a fixed place
    bytes[studentsPage() * pageSize + columnPlace(1)] = 0x7F;
    EXPECT_EQ(cells(u"学生"_s)[2], (std::vector<runtime::Value>{QByteArray("\3\0\0\0", 4),
                                                                QByteArray("\x19\x4E"), u"短"_s}));
    OldDatabase database(path());
    std::vector<Finding> findings;
    oldlibraries::findLosses(database, database.readTables(), findings);
    ASSERT_EQ(findings.size(), 2U);
    for (const Finding& finding : findings) {
        EXPECT_EQ(finding.table, u"学生"_s);
        EXPECT_EQ(finding.done, u"这一列的类型无法识别，内容原样转入，程序不能显示。"_s);
    }
    EXPECT_EQ(findings[0].column, u"ID"_s);
    EXPECT_EQ(findings[1].column, u"姓名"_s);
}

TEST_F(OtherOldFile, KeepsHiddenAndLeftOverTablesAndNoneOfTheEngine)
{
    OldFileWriter file(path());
    const std::vector<support::OldColumnPlan> columns{{u"ID"_s, OldType::Long}};
    file.addTable(u"隐藏"_s, columns);
    file.addTable(u"~TMPCLP123"_s, columns);
    file.addTable(u"MSysQueries"_s, columns, OldFileWriter::TableKind::System);
    file.addTable(u"引擎"_s, columns);
    save(file);
    setObjectFlags(students.definitionPage, 8);
    setObjectFlags(colours.definitionPage, 2);
    EXPECT_EQ(tableNames(), (QStringList{u"隐藏"_s, u"~TMPCLP123"_s}));
}

TEST_F(OtherOldFile, HasWhatIsNoTableAndStaysBehind)
{
    OldFileWriter file(path());
    file.addObject(u"外表"_s, 6);
    file.addObject(u"外库"_s, 4);
    file.addTable(u"学生"_s, {{u"ID"_s, OldType::Long}});
    file.addObject(u"查询1"_s, 5);
    file.addObject(u"~sq_f窗体"_s, 5);
    file.addObject(u"窗体1"_s, -32768);
    file.addObject(u"报表1"_s, -32764);
    file.addObject(u"宏1"_s, -32766);
    file.addObject(u"模块1"_s, -32761);
    file.addObject(u"关系"_s, 8);
    save(file);
    EXPECT_EQ(tableNames(), QStringList{u"学生"_s});
    OldDatabase database(path());
    std::vector<Finding> findings;
    oldlibraries::findLosses(database, database.readTables(), findings);
    QStringList texts;
    for (const Finding& finding : findings)
        texts.append(finding.table + u' ' + finding.done);
    EXPECT_EQ(texts, (QStringList{u"外表 这个表在别的文件里，没有转换。"_s,
                                  u"外库 这个表在别的文件里，没有转换。"_s,
                                  u"查询1 这是查询，没有转换。"_s, u"窗体1 这是窗体，没有转换。"_s,
                                  u"报表1 这是报表，没有转换。"_s, u"宏1 这是宏，没有转换。"_s,
                                  u"模块1 这是程序模块，没有转换。"_s}));
}

TEST_F(OtherOldFile, HasAListOfTwentyThousandThings)
{
    OldFileWriter file(path());
    for (int i = 0; i < 20'000; ++i)
        file.addObject(u"查询%1"_s.arg(i), 5);
    file.addTable(u"学生"_s, {{u"ID"_s, OldType::Long}});
    save(file);
    EXPECT_EQ(tableNames(), QStringList{u"学生"_s});
    EXPECT_EQ(OldDatabase(path()).readOtherObjects().size(), 20'000U);
}
