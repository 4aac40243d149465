#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "oldlibraries/OldRefusals.h"
#include "oldlibraries/UsedPages.h"
#include "support/FileBytes.h"
#include "support/OldFileWriter.h"

namespace tests {

using namespace Qt::StringLiterals;
using oldlibraries::OldDatabase;
using oldlibraries::OldFileFailure;
using oldlibraries::OldTable;
using oldlibraries::OldType;
using oldlibraries::PageFile;
using support::OldFileWriter;

inline constexpr qsizetype pageSize = PageFile::pageSize;
inline constexpr qsizetype objectsPage = 2;
inline constexpr qsizetype definitionHead = 63;
inline constexpr qsizetype columnSize = 25;

/// A file that is made whole and then changed at one place.
class HostileOldFile : public testing::Test
{
protected:
    QString path() const { return m_folder.filePath(u"旧.CJK"_s); }

    /// Two tables: one with rows of every kind and a memo in pieces, and a small one.
    void SetUp() override
    {
        OldFileWriter file(path());
        file.setLongForm(OldFileWriter::LongForm::Chain);
        file.addTable(
            u"学生"_s,
            {{u"ID"_s, OldType::Long}, {u"姓名"_s, OldType::Text}, {u"备注"_s, OldType::Memo}});
        file.addRow({1, u"甲"_s, QString(3000, u'班')});
        file.addRow({2, u"乙"_s, {}}, OldFileWriter::RowKind::Moved);
        file.addRow({3, u"丙"_s, u"短"_s});
        file.addTable(u"颜色表"_s, {{u"ID"_s, OldType::Long}, {u"颜色"_s, OldType::Text}});
        file.addRow({7, u"红"_s});
        file.save();
        load();
    }

    void load()
    {
        bytes = support::read(path());
        OldDatabase database(path());
        const std::vector<OldTable> tables = database.readTables();
        students = tables.front();
        colours = tables.back();
        pages = oldlibraries::usedPages(database.file(), students.usedPages);
    }

    template <typename Number> void put(qsizetype page, qsizetype place, Number number)
    {
        support::put(bytes, page * pageSize + place, number);
    }
    quint32 u32(qsizetype page, qsizetype place) const
    {
        return qFromLittleEndian<quint32>(bytes.constData() + page * pageSize + place);
    }
    quint16 u16(qsizetype page, qsizetype place) const
    {
        return qFromLittleEndian<quint16>(bytes.constData() + page * pageSize + place);
    }

    /// Where a row of a page begins, and the byte behind it.
    qsizetype rowBegin(qsizetype page, int row) const { return u16(page, 14 + 2 * row) & 0x1FFF; }
    qsizetype rowEnd(qsizetype page, int row) const
    {
        return row == 0 ? pageSize : rowBegin(page, row - 1);
    }
    void setEntry(qsizetype page, int row, quint16 entry) { put(page, 14 + 2 * row, entry); }

    qsizetype appendPage(const QByteArray& page)
    {
        bytes += page.leftJustified(pageSize, '\0');
        return bytes.size() / pageSize - 1;
    }

    /// A page that says of whose rows it is.
    static QByteArray rowsPage(quint32 owner, const std::vector<QByteArray>& rows,
                               support::OldRowsPage::Flag flag = support::OldRowsPage::Stored)
    {
        support::OldRowsPage page(0, owner);
        for (const QByteArray& row : rows)
            page.add(row, flag);
        return page.bytes();
    }

    static QByteArray pointer(qsizetype page, int row = 0)
    {
        QByteArray bytes;
        support::append(bytes, quint32(page << 8 | row));
        return bytes;
    }

    /// Puts it into the list of pages of the students.
    void usePage(quint32 number)
    {
        const quint32 map = students.usedPages.page;
        const qsizetype begin = rowBegin(map, 0);
        const quint32 first = u32(map, begin + 1);
        ASSERT_GE(number, first);
        ASSERT_LT(begin + 5 + (number - first) / 8, rowEnd(map, 0));
        char& bits = bytes[map * pageSize + begin + 5 + (number - first) / 8];
        bits = char(bits | 1 << (number - first) % 8);
    }

    void replaceAll(const QByteArray& head, const QByteArray& by)
    {
        for (qsizetype at = bytes.indexOf(head); at >= 0; at = bytes.indexOf(head, at + 1))
            bytes.replace(at, by.size(), by);
    }

    void expectRead()
    {
        support::write(path(), bytes);
        EXPECT_NO_THROW(readAllCells(path()));
    }
    void expectCutOff()
    {
        support::write(path(), bytes);
        EXPECT_EQ(oldRefusal(path()),
                  (OldRefusal{OldFileFailure::CutOff,
                              u"%1 不完整（后面一部分丢失了），不能转换。"_s.arg(path())}));
    }
    void expectDamaged(const QString& what)
    {
        support::write(path(), bytes);
        EXPECT_EQ(oldRefusal(path()),
                  (OldRefusal{OldFileFailure::Damaged,
                              u"%1 已损坏，不能转换：%2。"_s.arg(path(), what)}));
    }

    quint32 studentsPage() const { return students.definitionPage; }
    /// The page of the rows, and the one to which a row was moved.
    quint32 rowsPageNumber() const { return u16(pages[0], 12) == 3 ? pages[0] : pages[1]; }
    quint32 movedPageNumber() const { return u16(pages[0], 12) == 3 ? pages[1] : pages[0]; }
    /// Where the row of the first student says where his memo is.
    qsizetype memoPlace() const
    {
        const qsizetype begin = rowBegin(rowsPageNumber(), 0);
        const qsizetype end = rowEnd(rowsPageNumber(), 0);
        // Behind the memo stand four places and a count of two bytes, and a mask of one.
        return qMax(begin, end - 1 - 2 - 3 * 2 - 12);
    }

    QByteArray bytes;
    OldTable students;
    OldTable colours;
    std::vector<quint32> pages;

private:
    QTemporaryDir m_folder;
};

} // namespace tests
