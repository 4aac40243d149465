#pragma once

#include <initializer_list>
#include <vector>

#include <gtest/gtest.h>

#include "import/tidy/Choices.h"
#include "import/tidy/Tidy.h"
#include "platform/runtime/TextFile.h"
#include "support/PrintQString.h"

namespace tidy {

using namespace Qt::StringLiterals;

using Cells = std::vector<runtime::Value>;
using Rows = std::vector<Cells>;

/// The aliases that are shipped.
inline const Aliases& shippedAliases()
{
    static const Aliases aliases(
        runtime::readAllLines(QStringLiteral(PROJECT_DATA_FOLDER "/别名.txt")));
    return aliases;
}

/// A sheet as text: cells joined by "|", rows by a line break.
inline QString sheetText(const excel::Worksheet& sheet)
{
    QStringList rows;
    for (int row = 1; row <= sheet.table().lastRow(); ++row) {
        QStringList cells;
        for (int column = 1; column <= sheet.table().lastColumn(); ++column)
            cells.append(sheet.Cells(row, column).text());
        rows.append(cells.join(u'|'));
    }
    return rows.join(u'\n');
}

/// A workbook made of rows, and a roster.
class TidyFixture : public testing::Test
{
protected:
    excel::Worksheet& sheet(const QString& name, const Rows& rows)
    {
        excel::Worksheet& made = book.addSheet(name);
        int row = 0;
        for (const Cells& cells : rows) {
            ++row;
            int column = 0;
            for (const runtime::Value& cell : cells)
                made.setCell(row, ++column, cell);
        }
        return made;
    }

    Sources sources() const { return {shippedAliases(), roster}; }

    Proposal proposed(Goal goal = Goal::ExamScores) { return propose(book, goal, sources()); }

    void again(Proposal& proposal) { reconsider(proposal, book, sources()); }

    /// The sheets of the result, each with its name ahead, or the open questions.
    QString result(const Proposal& proposal)
    {
        if (!proposal.isDecided())
            return proposal.questions.join(u'\n');
        QStringList texts;
        const auto target = tidied(book, proposal, sources());
        for (const excel::Worksheet* made : std::as_const(*target).sheets())
            texts.append(u"["_s + made->Name() + u"]\n"_s + sheetText(*made));
        return texts.join(u'\n');
    }

    QString result() { return result(proposed()); }

    /// The rows that are left out: "1 标题行, 5-7 空行".
    static QString leftOut(const SheetProposal& sheet)
    {
        QStringList texts;
        for (const LeftOutRows& rows : sheet.leftOut) {
            const QString last =
                rows.last > rows.first ? u'-' + QString::number(rows.last) : QString();
            texts.append(QString::number(rows.first) + last + u' ' + rows.reason);
        }
        return texts.join(u", "_s);
    }

    /// What each column is taken for: "班级 学号 姓名 语文 ?数学"; open ones have a question mark.
    static QString columns(const SheetProposal& sheet)
    {
        QStringList texts;
        for (const ColumnProposal& column : sheet.columns)
            texts.append((column.isOpen ? u"?"_s : QString())
                         + (column.use.field == Field::Leave ? u"-"_s : column.use.text()));
        return texts.join(u' ');
    }

    static QString remarks(const Proposal& proposal)
    {
        QStringList texts;
        for (const Remark& remark : proposal.remarks)
            texts.append(remark.sheet + QString::number(remark.row) + u": "_s + remark.text);
        return texts.join(u'\n');
    }

    excel::Workbook book{u"期中.xlsx"_s};
    Roster roster{{u"语文"_s, u"数学"_s, u"英语"_s}, {}};

    /// Class 301 with three, class 302 with two of one name.
    const std::vector<RosterStudent> students{
        {301, 1, u"张三"_s, u"理"_s, u"10001"_s, u"G1"_s},
        {301, 2, u"李四"_s, u"理"_s, u"10002"_s, u"G2"_s},
        {301, 3, u"王小五"_s, u"理"_s, u"10003"_s, u"G3"_s},
        {302, 1, u"赵六"_s, u"理"_s, u"10004"_s, u"G4"_s},
        {302, 5, u"张伟"_s, u"理"_s, u"010005"_s, u"G5"_s},
        {302, 7, u"张伟"_s, u"理"_s, u"010006"_s, u"G6"_s},
    };
    void useLibrary() { roster = Roster({u"语文"_s, u"数学"_s, u"英语"_s}, students); }
};

} // namespace tidy
