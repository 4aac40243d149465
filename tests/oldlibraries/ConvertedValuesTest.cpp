#include <bit>
#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include <QDateTime>
#include <QtEndian>

#include "oldlibraries/Converting.h"
#include "oldlibraries/OldCells.h"
#include "oldlibraries/OldFileError.h"
#include "platform/database/ColumnDeclaration.h"
#include "platform/database/Recordset.h"
#include "platform/database/Statement.h"
#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"
#include "support/RowTexts.h"

using namespace Qt::StringLiterals;
using oldlibraries::OldType;
using runtime::Value;
using support::OldColumnPlan;
using support::OldFileWriter;

namespace {

class Converted : public tests::Converting
{
protected:
    using Rows = std::vector<std::vector<Value>>;

    /// Converts a file of one table and opens what it became.
    void convertTable(const QString& table, const std::vector<OldColumnPlan>& columns,
                      const Rows& rows)
    {
        OldFileWriter old(request.oldPath);
        old.addTable(table, columns);
        for (const std::vector<Value>& row : rows)
            old.addRow(row);
        if (table != u"信息表"_s)
            tests::addStudents(old);
        old.save();
        convertAndOpen(table);
    }

    /// What is said of other tables is not looked at.
    void convertAndOpen(const QString& table)
    {
        const auto report = convert();
        ASSERT_TRUE(report);
        for (const oldlibraries::Finding& finding : report->findings) {
            if (finding.table == table)
                findings.append(u"%1|%2|%3|%4"_s.arg(finding.row)
                                    .arg(finding.column, finding.value, finding.done));
        }
        library.Open(request.newPath);
    }

    QString rows(const QString& sql)
    {
        database::Recordset found;
        found.Open(sql, library);
        return support::rowTexts(found);
    }

    /// As a statement would write it.
    QString declared(const QString& table, const QString& column)
    {
        for (const auto& found : database::columnDeclarations(library, table)) {
            if (found.name == column)
                return (QStringList{found.type, found.collation, found.defaultValue}.join(u'|'))
                       + (found.key == database::ColumnDeclaration::Key::AutoNumber ? u"|number"_s
                          : found.key == database::ColumnDeclaration::Key::Unique   ? u"|unique"_s
                                                                                    : QString());
        }
        return u"none"_s;
    }

    database::Connection library;
    QStringList findings;
};

const OldColumnPlan number{u"ID"_s, OldType::Long, 0, 0, true};

} // namespace

TEST_F(Converted, ColumnsOfUnknownTablesAreDeclaredByTheirType)
{
    struct Case
    {
        OldColumnPlan column;
        QString declared;
    };
    const Case cases[] = {
        {{u"真"_s, OldType::Boolean}, u"Boolean INTEGER||"_s},
        {{u"字节"_s, OldType::Byte}, u"Integer INTEGER||"_s},
        {{u"短"_s, OldType::Integer}, u"Integer INTEGER||"_s},
        {{u"长"_s, OldType::Long}, u"Long INTEGER||"_s},
        {{u"钱"_s, OldType::Currency}, u"Double REAL||"_s},
        {{u"单"_s, OldType::Single}, u"Single REAL||"_s},
        {{u"双"_s, OldType::Double}, u"Double REAL||"_s},
        {{u"日"_s, OldType::DateTime}, u"text(50)|NOCASE|"_s},
        {{u"节"_s, OldType::Binary, 10}, u"LongBinary BLOB||"_s},
        {{u"文"_s, OldType::Text, 30}, u"text(30)|NOCASE|"_s},
        {{u"片"_s, OldType::LongBinary}, u"LongBinary BLOB||"_s},
        {{u"备"_s, OldType::Memo}, u"Memo TEXT|NOCASE|"_s},
        {{u"号"_s, OldType::Guid}, u"text(50)|NOCASE|"_s},
        {{u"数"_s, OldType::Decimal, 0, 3}, u"Double REAL||"_s},
        {number, u"INTEGER|||number"_s},
    };
    std::vector<OldColumnPlan> columns;
    for (const Case& each : cases)
        columns.push_back(each.column);
    convertTable(u"各种"_s, columns, {});
    for (const Case& each : cases)
        EXPECT_EQ(declared(u"各种"_s, each.column.name), each.declared)
            << each.column.name.toStdString();
}

TEST_F(Converted, KnownColumnsAreAsInTheEmptyLibraryUnlessTheOldOnesHoldMore)
{
    struct Case
    {
        OldColumnPlan column;
        QString declared;
    };
    const Case cases[] = {
        {{u"ID"_s, OldType::Long}, u"INTEGER|||number"_s},
        {{u"班级"_s, OldType::Integer}, u"Double REAL||"_s},
        {{u"学号"_s, OldType::Text, 20}, u"text(20)|NOCASE|"_s},
        {{u"姓名"_s, OldType::Text, 20}, u"text(50)|NOCASE|"_s},
        {{u"科类"_s, OldType::Text, 80}, u"text(80)|NOCASE|"_s},
        {{u"类别代码"_s, OldType::Single}, u"Double REAL||1"_s},
        {{u"类别"_s, OldType::Memo}, u"Memo TEXT|NOCASE|"_s},
        {{u"出生时间"_s, OldType::DateTime}, u"text(50)|NOCASE|"_s},
        {{u"备注"_s, OldType::Text, 255}, u"Memo TEXT|NOCASE|"_s},
        {{u"身高"_s, OldType::Single}, u"Single REAL||"_s},
    };
    std::vector<OldColumnPlan> columns;
    for (const Case& each : cases)
        columns.push_back(each.column);
    convertTable(u"信息表"_s, columns, {});
    for (const Case& each : cases)
        EXPECT_EQ(declared(u"信息表"_s, each.column.name), each.declared)
            << each.column.name.toStdString();
    EXPECT_THAT(findings,
                testing::IsSupersetOf(
                    {u"0|学号||类型与现在的成绩库不同，照旧库的类型保存。"_s,
                     u"0|出生时间||日期时间列，按“2009-07-31 08:30:00”这样的文字保存。"_s}));
}

TEST_F(Converted, AMarkThatIsMoreThanYesOrNoTodayHasRoomForIt)
{
    convertTable(u"分班表"_s, {{u"已分班"_s, OldType::Boolean}}, {{true}, {false}});
    EXPECT_EQ(declared(u"分班表"_s, u"已分班"_s), u"Long INTEGER||0"_s);
    EXPECT_EQ(rows(u"select 已分班 from 分班表"_s), u"1 / 0"_s);
}

TEST_F(Converted, ATextThatIgnoresBlanksAtItsEndDoesSoWhenItIsWider)
{
    convertTable(u"设置表"_s, {{u"ID"_s, OldType::Long}, {u"名称"_s, OldType::Text, 200}}, {});
    EXPECT_EQ(declared(u"设置表"_s, u"名称"_s), u"text(200)|RTRIM|"_s);
}

TEST_F(Converted, ValuesGoOverAsTheyAre)
{
    const QString guid = u"{01234567-89ab-cdef-0123-456789abcdef}"_s;
    convertTable(u"各种"_s,
                 {{u"真"_s, OldType::Boolean},
                  {u"字节"_s, OldType::Byte},
                  {u"钱"_s, OldType::Currency},
                  {u"单"_s, OldType::Single},
                  {u"日"_s, OldType::DateTime},
                  {u"号"_s, OldType::Guid},
                  {u"数"_s, OldType::Decimal, 0, 3},
                  {u"文"_s, OldType::Text}},
                 {{true, 255, -1.25, 88.1F, 39814.375, guid, u"-12.500"_s, u"O'Neil--"_s},
                  {false, 0, 0.0, 0.0F, 39814.0, guid, u"0.000"_s, u""_s},
                  {false, {}, {}, {}, {}, {}, {}, {}}});
    EXPECT_EQ(
        rows(u"select * from 各种"_s),
        u"True|255|-1.25|88.1|2009-01-01 09:00:00|%1|-12.5|O'Neil-- / "
        "False|0|0|0|2009-01-01|%1|0| / False|NULL|NULL|NULL|NULL|NULL|NULL|NULL"_s.arg(guid));
    database::Statement single(library, u"select 单, typeof(真), 真 from 各种"_s);
    ASSERT_TRUE(single.step());
    EXPECT_EQ(single.number(0), double(88.1F));
    EXPECT_EQ(single.integer(2), 1);
    EXPECT_EQ(findings, (QStringList{u"0|钱||货币或小数列，按数保存。"_s,
                                     u"0|日||日期时间列，按“2009-07-31 08:30:00”这样的文字保存。"_s,
                                     u"0|号||“同步复制 ID”列，按文字保存。"_s,
                                     u"0|数||货币或小数列，按数保存。"_s}));
}

TEST_F(Converted, AmountsAreExactWithUpToFifteenDigits)
{
    convertTable(u"钱"_s,
                 {{u"数"_s, OldType::Decimal, 0, 3},
                  {u"钱"_s, OldType::Currency},
                  {u"整"_s, OldType::Decimal}},
                 {{u"-0.000"_s, 0.0001, u"-0"_s},
                  {u"999999999999.999"_s, -99999999999.9999, u"100"_s},
                  {u"100000000000000.000"_s, 0.1, u"-20"_s}});
    EXPECT_EQ(rows(u"select * from 钱"_s),
              u"0|0.0001|0 / 999999999999.999|-99999999999.9999|100 / 100000000000000|0.1|-20"_s);
    EXPECT_EQ(findings.size(), 3);
}

TEST_F(Converted, DatesAreReadByTheOldCalendar)
{
    convertTable(u"日子"_s, {{u"日"_s, OldType::DateTime}},
                 {{0.0}, {-0.25}, {-1.25}, {2.0}, {-657434.0}, {2958465.0}, {39814.99999999}});
    EXPECT_EQ(rows(u"select * from 日子"_s),
              u"1899-12-30 / 1899-12-30 06:00:00 / 1899-12-29 06:00:00 / 1900-01-01 / 0100-01-01 / "
              "9999-12-31 / 2009-01-02"_s);
}

TEST_F(Converted, OddValuesAreTold)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    const QString halfALetter = QChar(0xD800) + u"a"_s;
    convertTable(u"怪"_s,
                 {{u"双"_s, OldType::Double},
                  {u"单"_s, OldType::Single},
                  {u"文"_s, OldType::Text},
                  {u"日"_s, OldType::DateTime},
                  {u"数"_s, OldType::Decimal, 0, 3}},
                 {{nan, float(infinite), halfALetter, 1e9, u"1234567890123456.125"_s},
                  {1.5, float(nan), u"𬭎"_s, nan, u"0.100"_s}});
    EXPECT_EQ(rows(u"select 双, 文, 日 from 怪"_s), u"NULL|?a|1000000000 / 1.5|𬭎|nan"_s);
    database::Statement stored(library, u"select 单, 数 from 怪"_s);
    ASSERT_TRUE(stored.step());
    EXPECT_EQ(stored.number(0), infinite);
    EXPECT_EQ(stored.number(1), 1234567890123456.125);
    ASSERT_TRUE(stored.step());
    EXPECT_TRUE(stored.isNull(0));
    EXPECT_EQ(stored.number(1), 0.1);
    EXPECT_EQ(
        findings.mid(2),
        (QStringList{u"1|双|nan|不是有效的数，新库里是空值。"_s,
                     u"2|单|nan|不是有效的数，新库里是空值。"_s, u"1|单|inf|无穷大，原样转入。"_s,
                     u"1|文|%1|有不完整的字符，新库里换成了问号。"_s.arg(halfALetter),
                     u"1|日|1000000000|不是日期，按数字的文字保存。"_s,
                     u"2|日|nan|不是日期，按数字的文字保存。"_s,
                     u"1|数|1234567890123456.125|位数太多，按最接近的数保存。"_s}));
}

TEST_F(Converted, OfALongOddValueTheBeginningIsTold)
{
    const QString pairs = QString(600, u'甲') + u"𬭎"_s.repeated(2000);
    const QString odd = u"a"_s + pairs + QChar(0xD800);
    convertTable(u"怪"_s, {{u"备"_s, OldType::Memo}}, {{odd}});
    EXPECT_EQ(findings.last(),
              u"1|备|a%1…|有不完整的字符，新库里换成了问号。"_s.arg(pairs.left(998)));
}

TEST_F(Converted, MoreThanAThousandOddValuesOfAColumnAreTold)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    convertTable(u"怪"_s, {{u"双"_s, OldType::Double}, number},
                 Rows(1200, {nan, std::numeric_limits<int>::min()}));
    EXPECT_EQ(rows(u"select count(*) from 怪"_s), u"1200"_s);
    ASSERT_EQ(findings.size(), 2003);
    EXPECT_EQ(findings[999], u"1000|双|nan|不是有效的数，新库里是空值。"_s);
    EXPECT_EQ(findings[1000],
              u"0|双||这样的还有 200 处，没有一一列出：不是有效的数，新库里是空值。"_s);
    EXPECT_EQ(findings[2001], u"1000|ID|-2147483648|几行都是这个值，原样转入。"_s);
    EXPECT_EQ(findings[2002], u"0|||这样的还有 200 处，没有一一列出：几行都是这个值，原样转入。"_s);
}

TEST_F(Converted, ANumberOfARemovedRowIsNeverGivenAgain)
{
    OldFileWriter old(request.oldPath);
    for (const QString& table : {u"信息表"_s, u"别的"_s, u"空的"_s}) {
        old.addTable(table, {number, {u"姓名"_s, OldType::Text}});
        if (table != u"空的"_s)
            old.addRow({3, u"甲"_s});
        old.addRow({9, u"乙"_s}, OldFileWriter::RowKind::Deleted);
    }
    old.save();
    convertAndOpen(u"别的"_s);
    for (const QString& table : {u"信息表"_s, u"别的"_s, u"空的"_s}) {
        database::Recordset added;
        added.Open(u"select * from "_s + table, library);
        added.AddNew();
        added.Fields(u"姓名"_s).setValue(u"丙"_s);
        added.Update();
        EXPECT_EQ(rows(u"select ID from %1 where 姓名='丙'"_s.arg(table)), u"10"_s)
            << table.toStdString();
    }
}

TEST_F(Converted, NumbersThatStandTwiceGoOverAndTheColumnNumbersNoMore)
{
    convertTable(u"信息表"_s, {number, {u"姓名"_s, OldType::Text}},
                 {{1, u"甲"_s}, {2, u"乙"_s}, {1, u"丙"_s}, {Value(), u"丁"_s}});
    EXPECT_EQ(rows(u"select ID, 姓名 from 信息表"_s), u"1|甲 / 2|乙 / 1|丙 / NULL|丁"_s);
    EXPECT_EQ(declared(u"信息表"_s, u"ID"_s), u"Long INTEGER||"_s);
    EXPECT_EQ(findings.mid(0, 4),
              (QStringList{
                  u"0|ID||有空的或重复的编号，新库里这一列不能自动编号，以后新加的行没有编号。"_s,
                  u"1|ID|1|几行都是这个值，原样转入。"_s, u"3|ID|1|几行都是这个值，原样转入。"_s,
                  u"4|ID||没有值，原样转入。"_s}));
}

TEST_F(Converted, AMissingNumberAloneIsEnoughForThat)
{
    convertTable(u"别的"_s, {number}, {{1}, {Value()}});
    EXPECT_EQ(rows(u"select * from 别的"_s), u"1 / NULL"_s);
    EXPECT_EQ(findings,
              (QStringList{
                  u"0|ID||有空的或重复的编号，新库里这一列不能自动编号，以后新加的行没有编号。"_s,
                  u"2|ID||没有值，原样转入。"_s}));
}

TEST_F(Converted, KeysThatStandTwiceButForTheirCaseGoOver)
{
    convertTable(u"自定义显示表"_s,
                 {{u"项目名称"_s, OldType::Text}, {u"显示项目"_s, OldType::Text}},
                 {{u"ab"_s, u"语文"_s}, {u"AB"_s, u"数学"_s}, {u"c"_s, u"英语"_s}});
    EXPECT_EQ(rows(u"select 项目名称, 显示项目 from 自定义显示表"_s),
              u"ab|语文 / AB|数学 / c|英语"_s);
    EXPECT_EQ(declared(u"自定义显示表"_s, u"项目名称"_s), u"text(50)|NOCASE|"_s);
    EXPECT_EQ(findings.mid(0, 3),
              (QStringList{u"0|项目名称||有空的或重复的值，新库里这一列不再防止重复。"_s,
                           u"1|项目名称|ab|几行都是这个值，原样转入。"_s,
                           u"2|项目名称|AB|几行都是这个值，原样转入。"_s}));
}

TEST_F(Converted, RowsStandByTheirNumberWhereTheyCameOtherwise)
{
    convertTable(u"别的"_s, {{u"姓名"_s, OldType::Text}, number},
                 {{u"甲"_s, 5}, {u"乙"_s, -2}, {u"丙"_s, 7}});
    EXPECT_EQ(rows(u"select * from 别的"_s), u"乙|-2 / 甲|5 / 丙|7"_s);
    EXPECT_EQ(findings, QStringList{u"0|ID||旧库里的行不按这个编号的次序，新库里按它的次序。"_s});
}

TEST_F(Converted, ANumberOfAnotherTypeIsAColumnLikeOthers)
{
    convertTable(u"信息表"_s, {{u"ID"_s, OldType::Double}, {u"姓名"_s, OldType::Text}},
                 {{2.5, u"甲"_s}});
    EXPECT_EQ(declared(u"信息表"_s, u"ID"_s), u"Double REAL||"_s);
    EXPECT_THAT(findings,
                testing::Contains(u"0|ID||旧库的类型不能自动编号，新库里这一列不自动编号。"_s));
}

TEST_F(Converted, NamesThatStatementsCannotHoldAreChanged)
{
    OldFileWriter old(request.oldPath);
    old.addTable(u"Sqlite_统计"_s, {{u"ROWID"_s, OldType::Long},
                                    {u"rowid_"_s, OldType::Long},
                                    {u"a]b"_s, OldType::Long},
                                    {u"x'; drop table 信息表; --"_s, OldType::Long}});
    old.addRow({1, 2, 3, 4});
    old.addTable(u"成绩表_考试"_s, {{u"甲"_s, OldType::Long}});
    old.addRow({5});
    tests::addStudents(old);
    old.save();
    convertAndOpen(u"Sqlite_统计"_s);
    EXPECT_EQ(rows(u"select ROWID__, rowid_, [a_b], [x'; drop table 信息表; --] "
                   "from [旧_Sqlite_统计]"_s),
              u"1|2|3|4"_s);
    EXPECT_EQ(rows(u"select 甲 from [成绩表_考试_]"_s), u"5"_s);
    EXPECT_EQ(findings,
              (QStringList{u"0|||表改名为“旧_Sqlite_统计”。"_s, u"0|ROWID||列改名为“ROWID__”。"_s,
                           u"0|a]b||列改名为“a_b”。"_s}));
}

TEST_F(Converted, RowsThatAreMissingRefuseTheLibraryOrAreTold)
{
    OldFileWriter old(request.oldPath);
    old.addTable(u"别的"_s, {{u"甲"_s, OldType::Long}});
    old.addRow({1});
    old.addRow({2});
    tests::addStudents(old);
    old.save();
    QByteArray bytes = support::read(request.oldPath);
    oldlibraries::OldDatabase database(request.oldPath);
    const qsizetype page = tests::oldTable(database, u"别的"_s).definitionPage;
    qToLittleEndian<quint32>(5, bytes.data() + page * oldlibraries::PageFile::pageSize + 16);
    support::write(request.oldPath, bytes);
    runtime::NoProgress progress;
    try {
        oldlibraries::convert(request, progress);
        FAIL() << "a library without all its rows was converted";
    } catch (const oldlibraries::OldFileError& error) {
        EXPECT_EQ(error.failure(), oldlibraries::OldFileFailure::RowsMissing);
        EXPECT_EQ(error.description(),
                  u"%1 的表“别的”记着 5 行，只读到 2 行，文件可能已损坏，没有转换。"_s.arg(
                      request.oldPath));
    }
    EXPECT_FALSE(QFile::exists(request.newPath));
    request.missingRows = oldlibraries::ConversionRequest::MissingRows::Accept;
    convertAndOpen(u"别的"_s);
    EXPECT_EQ(rows(u"select * from 别的"_s), u"1 / 2"_s);
    EXPECT_EQ(findings, QStringList{u"0||5|旧库记着 5 行，读到 2 行；读到的都已转换，请核对。"_s});
}

TEST_F(Converted, ARowThatIsTooLongIsRefusedByName)
{
    OldFileWriter old(request.oldPath);
    tests::addStudents(old);
    old.addTable(u"50%1"_s, {number, {u"照片"_s, OldType::LongBinary}});
    old.addRow({1, QByteArray("short")});
    old.addRow({2, QByteArray(99'100'000, 'x')});
    old.save();
    EXPECT_EQ(support::errorOf([&] { convert(); }), u"表“50%1”第 2 行的内容太长，不能转换。"_s);
    EXPECT_EQ(files(), QStringList{u"old.CJK"_s});
}
