#include "oldlibraries/HostileOldFile.h"

// Files whose pointers, counts and places are wrong on purpose: the list of tables and their
// definitions.

using tests::columnSize;
using tests::definitionHead;
using tests::HostileOldFile;
using tests::objectsPage;
using tests::pageSize;

using namespace Qt::StringLiterals;
using oldlibraries::OldDatabase;
using oldlibraries::OldTable;
using oldlibraries::OldType;
using support::OldFileWriter;

namespace {

const QString noStructure = u"表“学生”的结构读不出"_s;
const QString noObjects = u"表的目录读不出"_s;

} // namespace

TEST_F(HostileOldFile, IsReadAsLongAsNobodyChangesIt)
{
    expectRead();
    EXPECT_EQ(tests::oldCells(path(), u"学生"_s),
              (tests::OldCells{
                  {1, u"甲"_s, QString(3000, u'班')}, {2, u"乙"_s, {}}, {3, u"丙"_s, u"短"_s}}));
    ASSERT_EQ(u32(rowsPageNumber(), memoPlace()), 6000U);
}

TEST_F(HostileOldFile, HasADefinitionThatRunsInACircle)
{
    put(studentsPage(), 4, studentsPage());
    expectDamaged(noStructure);
}

TEST_F(HostileOldFile, HasADefinitionThatGoesOnOutsideOfTheFile)
{
    put(studentsPage(), 4, quint32(0x00FFFFFF));
    expectCutOff();
    put(studentsPage(), 4, quint32(0xFFFFFFFF));
    expectCutOff();
}

TEST_F(HostileOldFile, HasRowsWhereADefinitionShouldBe)
{
    put(studentsPage(), 4, rowsPageNumber());
    expectDamaged(noStructure);
    put(studentsPage(), 4, quint32(0));
    put(studentsPage(), 0, quint16(0x0101));
    expectDamaged(noStructure);
}

TEST_F(HostileOldFile, CountsColumnsOrIndexesThatAreNotThere)
{
    for (const quint16 columns : std::initializer_list<quint16>{0, 256, 0xFFFF}) {
        put(studentsPage(), 45, columns);
        expectDamaged(noStructure);
    }
    put(studentsPage(), 45, quint16(3));
    for (const quint32 indexes : {500U, 0x7FFFFFFFU, 0xFFFFFFFFU, 0x15555556U}) {
        put(studentsPage(), 51, indexes);
        expectDamaged(noStructure);
    }
}

TEST_F(HostileOldFile, HasColumnsThatShareANumberOrANameOrBytes)
{
    const auto column = [](int number) { return definitionHead + number * columnSize; };
    const QByteArray sound = bytes;
    put(studentsPage(), column(1) + 5, quint16(0));
    expectDamaged(u"表“学生”里列“姓名”不止一个"_s);
    bytes = sound;
    put(studentsPage(), column(2) + 7, quint16(0));
    expectDamaged(noStructure);
    bytes = sound;
    bytes[studentsPage() * pageSize + column(1) + 15] |= 1; // at a fixed place, that of ID
    expectDamaged(noStructure);
    bytes = sound;
    bytes[studentsPage() * pageSize + column(2) + 15] |= 1; // a memo cannot have one
    expectDamaged(noStructure);
}

TEST_F(HostileOldFile, HasNamesThatAreNone)
{
    const qsizetype name = definitionHead + 3 * columnSize; // of the first column, "ID"
    for (const quint16 size : std::initializer_list<quint16>{0, 1, 129, 0xFFFF}) {
        put(studentsPage(), name, size);
        expectDamaged(u"表“学生”里有一列的名称读不出"_s);
    }
    put(studentsPage(), name, quint16(4));
    for (const char16_t letter : {u'\0', u'\n', u'\xD86D'}) {
        put(studentsPage(), name + 2, quint16(letter));
        expectDamaged(u"表“学生”里有一列的名称读不出"_s);
    }
}

TEST_F(HostileOldFile, HasNoUsableListOfTables)
{
    const QByteArray sound = bytes;
    put(objectsPage, 0, quint16(0));
    expectDamaged(noObjects);
    bytes = sound;
    bytes[objectsPage * pageSize + definitionHead] = 0x0A; // Id as a text
    expectDamaged(noObjects);
    bytes = sound;
    put(objectsPage, 55, quint32(0xFFFFFF00));
    expectCutOff();
}

TEST_F(HostileOldFile, ListsATableTwice)
{
    OldFileWriter file(path());
    for (const QString& name : {u"表a"_s, u"表A"_s})
        file.addTable(name, {{u"ID"_s, OldType::Long}});
    file.save();
    bytes = support::read(path());
    expectDamaged(noObjects);
}

TEST_F(HostileOldFile, ListsMoreTablesThanAnybodyMakes)
{
    for (const int count : {1000, 1001}) {
        OldFileWriter file(path());
        for (int i = 0; i < count; ++i)
            file.addTable(u"表%1"_s.arg(i), {{u"ID"_s, OldType::Long}});
        file.save();
        bytes = support::read(path());
        if (count == 1000)
            expectRead();
        else
            expectDamaged(noObjects);
    }
}

TEST_F(HostileOldFile, ListsItsOwnListAsATable)
{
    // The only object without the system's mark that stands on the definition of 颜色表.
    const QByteArray id = pointer(0, int(colours.definitionPage));
    OldDatabase database(path());
    const OldTable objects = oldlibraries::readTable(database.file(), objectsPage, u"M"_s);
    const quint32 page = oldlibraries::usedPages(database.file(), objects.usedPages).front();
    const qsizetype place = bytes.lastIndexOf(id, (page + 1) * pageSize);
    ASSERT_GT(place, page * pageSize);
    for (const quint32 other : {quint32(objectsPage), studentsPage()}) {
        support::put(bytes, place, other);
        if (bytes.mid(place, 4) != id)
            support::write(path(), bytes);
        expectDamaged(noObjects);
    }
    support::put(bytes, place, quint32(0x00FFFFFF));
    expectCutOff();
}
