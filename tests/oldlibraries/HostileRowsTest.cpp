#include "oldlibraries/HostileOldFile.h"

// Files whose pointers, counts and places are wrong on purpose: the lists of pages, rows and long
// values.

using tests::HostileOldFile;
using tests::pageSize;

using namespace Qt::StringLiterals;
using oldlibraries::OldDatabase;
using oldlibraries::OldTable;
using oldlibraries::OldType;
using support::OldFileWriter;

namespace {

const QString noRow = u"表“学生”里有一行读不出"_s;
const QString noLongValue = u"一段长文字或一张照片读不出"_s;
const QString noMap = u"页的目录读不出"_s;
const QString sharedBytes = u"不同的地方指向同样的内容"_s;

QString noRowsOn(qsizetype page)
{
    return u"第 %1 页里的行读不出"_s.arg(page);
}

QString nothingPointedOn(qsizetype page)
{
    return u"第 %1 页没有别处指向的内容"_s.arg(page);
}

} // namespace

TEST_F(HostileOldFile, HasNoMapOfItsPages)
{
    const quint32 page = students.usedPages.page;
    const QByteArray sound = bytes;
    put(page, 14, quint16(0xC000 | u16(page, 14)));
    expectDamaged(noMap);
    bytes = sound;
    put(page, rowBegin(page, 0), quint8(2)); // no kind that there is
    expectDamaged(noMap);
    bytes = sound;
    put(studentsPage(), 55, quint32(page << 8 | 9));
    expectDamaged(noMap);
    bytes = sound;
    setEntry(page, 0, quint16(pageSize)); // nothing in it
    expectDamaged(noMap);
    bytes = sound;
    put(studentsPage(), 55, studentsPage() << 8);
    expectDamaged(noRowsOn(studentsPage()));
}

TEST_F(HostileOldFile, UsesPagesOutsideOfTheFile)
{
    const quint32 page = students.usedPages.page;
    put(page, rowBegin(page, 0) + 1, quint32(0xFFFFFFF0));
    expectCutOff();
}

TEST_F(HostileOldFile, HasPagesOfBitsThatAreNone)
{
    const quint32 page = students.usedPages.page;
    const qsizetype begin = rowBegin(page, 0);
    const QByteArray sound = bytes;
    put(page, begin, quint8(1));
    put(page, begin + 1, rowsPageNumber());
    expectDamaged(u"第 %1 页不是页的目录"_s.arg(rowsPageNumber()));
    put(page, begin + 1, quint32(0x00FFFFFF));
    expectCutOff();
    // The bits of a second page stand for pages that do not exist.
    const qsizetype bits = appendPage(QByteArray("\5\1\0\0\1", 5));
    put(page, begin + 1, quint32(0));
    put(page, begin + 5, quint32(bits));
    expectCutOff();
}

TEST_F(HostileOldFile, HasRowsThatReachIntoEachOther)
{
    const quint32 page = rowsPageNumber();
    const QByteArray sound = bytes;
    for (const quint16 entry : std::initializer_list<quint16>{0, 13, 19, 0x1FFF}) {
        bytes = sound;
        setEntry(page, 2, entry);
        expectDamaged(noRowsOn(page));
    }
    bytes = sound;
    setEntry(page, 0, quint16(0xC000 | 4097)); // also where a deleted row begins
    expectDamaged(noRowsOn(page));
    bytes = sound;
    setEntry(page, 1,
             quint16(0xC000 | pageSize)); // so that the third row takes the first one's bytes
    expectDamaged(noRowsOn(page));
    bytes = sound;
    put(page, 12, quint16(2042)); // more than fit
    expectDamaged(noRowsOn(page));
    put(page, 12, quint16(0xFFFF));
    expectDamaged(noRowsOn(page));
}

TEST_F(HostileOldFile, HasRowsOfWhichPartsReachOut)
{
    const quint32 page = rowsPageNumber();
    const QByteArray sound = bytes;
    const auto change = [&](qsizetype place, quint16 number) {
        bytes = sound;
        put(page, place, number);
        expectDamaged(noRow);
    };
    const qsizetype begin = rowBegin(page, 2);
    const qsizetype end = rowEnd(page, 2);
    for (const quint16 columns : std::initializer_list<quint16>{0x00FF, 0x7FFF, 0xFFFF})
        change(begin, columns);
    for (const quint16 parts : std::initializer_list<quint16>{0x00FF, 0x7FFF, 0xFFFF})
        change(end - 3, parts);
    for (const qsizetype place : {end - 5, end - 7, end - 9}) { // where parts begin
        for (const quint16 part : std::initializer_list<quint16>{0x7FFF, 0xFFFF})
            change(place, part);
    }
    change(end - 5, 1);          // ahead of the row's own bytes
    change(end - 7, quint16(0)); // the second part ahead of the first
    change(end - 5, 2);          // no room for the fixed part
}

TEST_F(HostileOldFile, HasRowsTooShortToBeSome)
{
    const quint32 page = rowsPageNumber();
    setEntry(page, 2, quint16(rowEnd(page, 2) - 1));
    expectDamaged(noRow);
    setEntry(page, 2, quint16(rowEnd(page, 2)));
    expectDamaged(noRow);
}

TEST_F(HostileOldFile, HasAMovedRowThatNeverArrives)
{
    const quint32 page = rowsPageNumber();
    const qsizetype place = rowBegin(page, 1);
    put(page, place, quint32(page << 8 | 1)); // to itself
    expectDamaged(noRow);
    put(page, place, quint32(0xFFFFFF00));
    expectCutOff();
    put(page, place, quint32(movedPageNumber() << 8 | 1)); // behind the last row
    expectDamaged(nothingPointedOn(movedPageNumber()));
    put(page, place, quint32(0));
    expectDamaged(noRowsOn(0));
    put(page, place, studentsPage() << 8);
    expectDamaged(noRowsOn(studentsPage()));
    // A row of another table.
    const qsizetype other = appendPage(rowsPage(colours.definitionPage, {"row"}));
    put(page, place, quint32(other << 8));
    expectDamaged(nothingPointedOn(other));
}

TEST_F(HostileOldFile, HasARowThatWasMovedTwice)
{
    using Flag = support::OldRowsPage::Flag;
    const tests::OldCells before = tests::oldCells(path(), u"学生"_s);
    const qsizetype place = movedPageNumber() * pageSize;
    const qsizetype begin = rowBegin(movedPageNumber(), 0);
    const QByteArray row = bytes.mid(place + begin, rowEnd(movedPageNumber(), 0) - begin);
    const qsizetype last =
        appendPage(rowsPage(studentsPage(), {row}, support::OldRowsPage::MovedHere));
    const qsizetype between =
        appendPage(rowsPage(studentsPage(), {pointer(last)},
                            Flag(support::OldRowsPage::Moved | support::OldRowsPage::MovedHere)));
    put(rowsPageNumber(), rowBegin(rowsPageNumber(), 1), quint32(between << 8));
    expectRead();
    EXPECT_EQ(tests::oldCells(path(), u"学生"_s), before);
}

TEST_F(HostileOldFile, HasALongValueThatNeverEnds)
{
    const quint32 page = rowsPageNumber();
    const quint32 first = u32(page, memoPlace() + 4) >> 8;
    const QByteArray sound = bytes;
    const qsizetype piece = rowBegin(first, 0);
    put(first, piece, quint32(0)); // no second piece
    expectDamaged(noRowsOn(0));
    put(first, piece, quint32(0xFFFFFF00));
    expectCutOff();
    put(first, piece, rowsPageNumber() << 8); // a page of the table
    expectDamaged(nothingPointedOn(rowsPageNumber()));
    // In a circle, as long as it says: the bytes are there, but more than the file has.
    put(first, piece, first << 8);
    put(page, memoPlace(), quint32(0x3FFFFFFF));
    expectDamaged(sharedBytes);
    // Pieces with nothing in them.
    const qsizetype empty = appendPage({});
    bytes.replace(empty * pageSize, pageSize,
                  rowsPage(oldlibraries::DataPage::ownedByLongValues, {pointer(empty)}));
    put(page, memoPlace() + 4, quint32(empty << 8));
    expectDamaged(noLongValue);
    bytes = sound;
    put(page, memoPlace(), quint32(0x40000000 | 6000)); // in one piece that is too short
    expectDamaged(noLongValue);
    put(page, memoPlace(), quint32(0x80000000 | 6000)); // in the row
    expectDamaged(noLongValue);
}

TEST_F(HostileOldFile, HasALongValueInARowThatIsTooShortForIt)
{
    const quint32 page = rowsPageNumber();
    put(page, rowEnd(page, 0) - 7, quint16(u16(page, rowEnd(page, 0) - 9) - 3));
    expectDamaged(noLongValue);
}

TEST_F(HostileOldFile, SharesALongValueAmongItsRows)
{
    OldFileWriter file(path());
    file.setLongForm(OldFileWriter::LongForm::OnePiece);
    file.addTable(u"学生"_s, {{u"备注"_s, OldType::Memo}});
    file.addRow({QString(2000, u'班')});
    for (int i = 0; i < 300; ++i)
        file.addRow({u"八个字的一段文字"_s});
    file.save();
    bytes = support::read(path());
    expectRead();
    const QByteArray large = bytes.mid(bytes.indexOf(QByteArray("\xA0\x0F\0\x40", 4)), 8);
    replaceAll(QByteArray("\x10\0\0\x40", 4), large);
    expectDamaged(sharedBytes);
}

TEST_F(HostileOldFile, SharesALongValueAmongItsTables)
{
    constexpr int tables = 30;
    OldFileWriter file(path());
    file.setLongForm(OldFileWriter::LongForm::Chain);
    for (int i = 0; i <= tables; ++i) {
        file.addTable(u"表%1"_s.arg(i), {{u"备注"_s, OldType::Memo}});
        file.addRow({i == 0 ? QString(50'000, u'班') : u"八个字的一段文字"_s});
    }
    file.save();
    bytes = support::read(path());
    expectRead();
    const QByteArray large = bytes.mid(bytes.indexOf(QByteArray("\xA0\x86\1\0", 4)), 8);
    replaceAll(QByteArray("\x10\0\0\0", 4), large);
    expectDamaged(sharedBytes);
}

TEST_F(HostileOldFile, LeadsManyRowsToOne)
{
    OldFileWriter file(path());
    file.addTable(u"学生"_s, {{u"备注"_s, OldType::Binary, 255}});
    for (int i = 0; i < 2000; ++i)
        file.addRow({QByteArray(i == 0 ? 250 : 1, 'a')}, OldFileWriter::RowKind::Moved);
    file.save();
    load();
    expectRead();
    QByteArray first;
    for (const quint32 page : pages) {
        for (int row = 0; row < u16(page, 12); ++row) {
            if ((u16(page, 14 + 2 * row) & 0xC000) != 0x4000)
                continue;
            const qsizetype place = page * pageSize + rowBegin(page, row);
            if (first.isEmpty())
                first = bytes.mid(place, 4);
            bytes.replace(place, 4, first);
        }
    }
    expectDamaged(sharedBytes);
}

// The list of a table's pages may hold pages that have become another's, which is no harm as long
// as no row is missing.
TEST_F(HostileOldFile, ListsPagesThatAreNotTheTables)
{
    usePage(studentsPage());
    usePage(colours.definitionPage);
    usePage(u32(rowsPageNumber(), memoPlace() + 4) >> 8);
    const QByteArray sound = bytes;
    expectRead();
    EXPECT_EQ(tests::oldCells(path(), u"学生"_s).size(), 3U);
    put(studentsPage(), 16, quint32(4)); // rows
    expectDamaged(u"表“学生”里有行找不到"_s);
    bytes = sound;
    put(colours.definitionPage, 0, quint8(6)); // no page that there is
    expectDamaged(u"表“颜色表”的结构读不出"_s);
    const qsizetype noise = appendPage(QByteArray(pageSize, '\x77'));
    bytes.replace(0, noise * pageSize, sound);
    usePage(quint32(noise));
    expectDamaged(noRow);
}

// Each page of another's costs its bytes, so a thousand tables cannot go through all of them.
TEST_F(HostileOldFile, ListsAllPagesForEachOfItsTables)
{
    OldFileWriter file(path());
    for (int i = 0; i < 60; ++i) {
        file.addTable(u"表%1"_s.arg(i), {{u"ID"_s, OldType::Long}});
        file.addRow({1});
    }
    file.save();
    OldDatabase database(path());
    bytes = support::read(path());
    for (const OldTable& table : database.readTables()) {
        const quint32 map = table.usedPages.page;
        QByteArray all("\0\3\0\0\0", 5);
        all.append(QByteArray(20, '\xFF'));
        bytes.replace(map * pageSize, pageSize, rowsPage(0, {all, {}}));
    }
    expectDamaged(sharedBytes);
}
