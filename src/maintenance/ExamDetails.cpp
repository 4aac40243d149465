#include "maintenance/ExamDetails.h"

#include <algorithm>

#include "library/ColumnNames.h"
#include "library/LibraryCopies.h"
#include "library/TextLength.h"
#include "maintenance/ExamRename.h"
#include "maintenance/QuotedText.h"
#include "maintenance/Refusal.h"
#include "maintenance/TypedFormula.h"
#include "maintenance/TypedNumber.h"
#include "platform/database/ColumnDeclaration.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/Trap.h"
#include "scoring/Scoring.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using database::SqlPiece;
using database::sqlWith;
using database::Statement;
using runtime::Trap;

namespace {

const Trap detailsTrap{" - Sub SaveExam/ExamDetails"};

const QString title = u"提示"_s;
constexpr int itemCol = 0;

int beforeCol(size_t row)
{
    return 1 + 2 * int(row);
}

int afterCol(size_t row)
{
    return beforeCol(row) + 1;
}

Refusal goneError(const QString& exam)
{
    return Refusal(u"成绩库里已经没有考试“%1”了。"_s.arg(shownName(exam)));
}

bool agrees(const QString& text, const QString& goOn)
{
    return runtime::choose({.text = text, .buttons = {goOn, u"取消"_s}, .safe = 1, .title = title})
           == 0;
}

/// A full mark as it is kept and shown; "" for a subject that was not examined, and a text that is
/// no number as it stands.
QString normalMark(const QString& typed)
{
    const std::optional<double> number = typedNumber(typed);
    if (!number)
        return plainDigits(typed);
    return *number == 0 ? QString() : runtime::singleText(float(*number));
}

} // namespace

QString ExamDetails::normal(const Item& item, const QString& typed)
{
    switch (item.kind) {
    case Kind::FullMark:
        return normalMark(typed);
    case Kind::Formula:
        return normalFormula(typed);
    case Kind::Remark:
        break;
    }
    return typed;
}

ExamDetails::Kind ExamDetails::kindOf(const QString& column, int position)
{
    if (position < library::fixedExamFields)
        return Kind::Remark;
    return library::isTotal(column) ? Kind::Formula : Kind::FullMark;
}

QStringList ExamDetails::exams() const
{
    QStringList names;
    detailsTrap([&] { names = examsByNumber(m_library.Conn); });
    return names;
}

bool ExamDetails::load(const QString& exam)
{
    Stored found;
    const bool isRead = unlessRefused(detailsTrap, [&] {
        const runtime::Phase phase;
        const database::ReadBatch reading(m_library.Conn);
        found = read(exam);
        if (found.rows.empty())
            throw goneError(exam);
    });
    if (!isRead)
        return false;
    m_exam = exam;
    name = exam;
    m_stored = std::move(found);
    m_refused.reset();
    fill();
    return true;
}

/// What names, numbers and splits exams is none of their details.
ExamDetails::Stored ExamDetails::read(const QString& exam) const
{
    static const QStringList keys{u"ID"_s, u"考试名称"_s, u"科类"_s, u"考试编号"_s};
    Statement rows(m_library.Conn, u"select rowid, 科类, * from 考试名称表 "
                                   "where 考试名称=? collate binary order by 考试编号, rowid"_s);
    rows.bind({exam});
    constexpr int firstColumn = 2;
    Stored found;
    std::vector<int> places;
    for (int i = firstColumn; i < rows.columnCount(); ++i) {
        const QString column = rows.columnName(i);
        if (i - firstColumn < library::fixedExamFields && keys.contains(column))
            continue;
        found.items.push_back({column, kindOf(column, i - firstColumn)});
        places.push_back(i);
    }
    while (rows.step()) {
        Row& row = found.rows.emplace_back(Row{rows.integer(0), rows.text(1), {}});
        for (size_t i = 0; i < places.size(); ++i) {
            const auto type =
                database::ColumnType::fromDeclaration(rows.columnDeclaration(places[i]));
            row.values.append(normal(found.items[i], rows.value(places[i], type).text()));
        }
    }
    return found;
}

void ExamDetails::fill()
{
    items = grid::FlexGrid();
    items.setRows(int(m_stored.items.size()) + 1);
    items.setCols(1 + 2 * int(m_stored.rows.size()));
    items.setColAlignment(-1, 1);
    fillHeadings();
    for (size_t i = 0; i < m_stored.items.size(); ++i) {
        const Item& item = m_stored.items[i];
        const int line = int(i) + 1;
        items.setTextMatrix(line, itemCol,
                            item.kind == Kind::FullMark  ? item.column + u" 满分"_s
                            : item.kind == Kind::Formula ? item.column + u" 公式"_s
                                                         : item.column);
        for (size_t row = 0; row < m_stored.rows.size(); ++row) {
            const QString& value = m_stored.rows[row].values[qsizetype(i)];
            const bool isNotSat = item.kind == Kind::FullMark && value.isEmpty();
            items.setTextMatrix(line, beforeCol(row), isNotSat ? u"未考"_s : value);
            items.setTextMatrix(line, afterCol(row), value);
        }
    }
}

void ExamDetails::fillHeadings()
{
    items.setTextMatrix(0, itemCol, u"项目"_s);
    for (size_t row = 0; row < m_stored.rows.size(); ++row) {
        const QString& stream = m_stored.rows[row].stream;
        const QString heading = stream.isEmpty() ? u"没有科类"_s : stream;
        items.setTextMatrix(0, beforeCol(row), heading + u"：现在"_s);
        items.setTextMatrix(0, afterCol(row), heading + u"：改为"_s);
    }
}

bool ExamDetails::isTypedInto(int row, int col) const
{
    return row > 0 && row < items.Rows() && col > itemCol && col % 2 == 0;
}

bool ExamDetails::isFullMark(int row) const
{
    const size_t place = size_t(row) - 1;
    return row > 0 && place < m_stored.items.size() && m_stored.items[place].kind == Kind::FullMark;
}

bool ExamDetails::isChanged() const
{
    return !m_exam.isEmpty() && (name != m_exam || !changedCells().empty());
}

std::vector<ExamDetails::Change> ExamDetails::changedCells() const
{
    std::vector<Change> changes;
    for (size_t i = 0; i < m_stored.items.size(); ++i) {
        for (size_t row = 0; row < m_stored.rows.size(); ++row) {
            const Item& item = m_stored.items[i];
            const Row& stored = m_stored.rows[row];
            const grid::CellPlace place{int(i) + 1, afterCol(row)};
            const QString after = normal(item, items.TextMatrix(place.row, place.col));
            const QString& before = stored.values[qsizetype(i)];
            if (after != before)
                changes.push_back({item, stored, before, after, place,
                                   u"%1（%2）"_s.arg(item.column, stored.stream)});
        }
    }
    return changes;
}

QStringList ExamDetails::changes() const
{
    QStringList lines;
    if (name != m_exam)
        lines.append(u"考试名称：%1 → %2"_s.arg(m_exam, name));
    for (const Change& change : changedCells())
        lines.append(changeLine(change));
    return lines;
}

/// A formula can name subjects that the exam lacks: the total adds up the others.
QString ExamDetails::changeLine(const Change& change) const
{
    const bool isMark = change.item.kind == Kind::FullMark;
    const auto shown = [&](const QString& text) {
        return !text.isEmpty() ? text : isMark ? u"未考"_s : u"（空）"_s;
    };
    QString line = u"%1%2：%3 → %4"_s.arg(change.title, isMark ? u"满分"_s : QString(),
                                          shown(change.before), shown(change.after));
    if (change.item.kind != Kind::Formula)
        return line;
    QStringList missing;
    for (size_t i = 0; i < m_stored.items.size(); ++i) {
        const Item& item = m_stored.items[i];
        const QString& typed = items.TextMatrix(int(i) + 1, change.place.col);
        if (item.kind == Kind::FullMark && normal(item, typed).isEmpty()
            && library::formulaTerms(change.after).contains(item.column))
            missing.append(item.column);
    }
    return missing.isEmpty() ? line : line + u"（没有考%1，不计入）"_s.arg(missing.join(u'、'));
}

/// The first fault, whose cell is noted; "" if everything can be saved.
QString ExamDetails::fault()
{
    m_refused.reset();
    QString text;
    if (name != m_exam)
        text = renameFault(m_library.Conn, m_exam, name);
    if (!text.isEmpty())
        return text;
    for (const Change& change : changedCells()) {
        text = cellFault(change);
        if (text.isEmpty())
            continue;
        m_refused = change.place;
        return text;
    }
    return {};
}

QString ExamDetails::cellFault(const Change& change) const
{
    const QString& text = change.after;
    if (text.isEmpty() || change.item.kind == Kind::Remark)
        return {};
    if (change.item.kind == Kind::FullMark)
        return typedNumber(text) ? QString()
                                 : u"%1的满分“%2”不是大于 0 的数。没有考的科目请留空。"_s.arg(
                                     change.title, text.left(30));
    if (text.size() > library::LongestText)
        return u"%1的公式最多 %2 个字，现在有 %3 个字。"_s.arg(
            change.title, QString::number(library::LongestText), QString::number(text.size()));
    QStringList columns;
    for (const Item& item : m_stored.items) {
        if (item.kind != Kind::Remark)
            columns.append(item.column);
    }
    return typedFormulaFault(text, columns);
}

bool ExamDetails::isConfirmed(library::Backup backup) const
{
    return library::hasRoomForBackup(m_library, backup) && mayHide() && mayLoseScores();
}

bool ExamDetails::mayHide() const
{
    if (name == m_exam)
        return true;
    QStringList hidden;
    {
        const runtime::Phase phase;
        const database::ReadBatch reading(m_library.Conn);
        hidden = hiddenByRename(m_library.Conn, m_exam, name);
    }
    for (QString& exam : hidden)
        exam = shownName(exam);
    return hidden.isEmpty()
           || agrees(u"改名以后考试列表里看不到“%1”，也就不能浏览和统计：列表不列出名称包含在前面的"
                     "考试名称里的考试。\n请换一个互不包含的名称。"_s.arg(hidden.join(u"”、“"_s)),
                     u"仍然改名"_s);
}

bool ExamDetails::mayLoseScores() const
{
    QStringList lines;
    {
        const runtime::Phase phase;
        const database::ReadBatch reading(m_library.Conn);
        for (const Change& change : changedCells()) {
            if (change.item.kind == Kind::FullMark)
                lines.append(lostScores(change));
        }
    }
    lines.removeAll(QString());
    return lines.isEmpty()
           || agrees(u"这些满分和已有的成绩不符：\n\n%1\n\n成绩本身不会改变，"
                     "但是统计会按新的满分，未考的科目不再统计。"_s.arg(lines.join(u'\n')),
                     u"仍然保存"_s);
}

/// The scores that the new full mark does not cover; "" if there are none.
QString ExamDetails::lostScores(const Change& change) const
{
    const QStringList columns = database::columnNames(m_library.Conn, u"成绩表"_s);
    if (!columns.contains(change.item.column, Qt::CaseInsensitive))
        return {};
    const bool isNotSat = change.after.isEmpty();
    Statement rows(m_library.Conn, sqlWith(u"select count(*) from 成绩表 where 考试名称=?1 and "
                                           "考试名称=?1 collate binary and 科类=?2 and %1>?3"_s,
                                           {SqlPiece::names({change.item.column})}));
    const float absent = -1;
    rows.bind({m_exam, change.row.stream, isNotSat ? absent : float(runtime::Val(change.after))});
    const qint64 count = rows.step() ? rows.integer(0) : 0;
    if (count == 0)
        return {};
    return isNotSat ? u"%1：改为未考，已有 %2 人的成绩"_s.arg(change.title, QString::number(count))
                    : u"%1：%2 人的成绩高于 %3"_s.arg(change.title, QString::number(count),
                                                      change.after);
}

DetailsSave ExamDetails::save(runtime::Progress& progress, library::Backup backup)
{
    QString refusal;
    bool mayGoOn = false;
    const bool isLookedAt = detailsTrap([&] {
        refusal = fault();
        mayGoOn = refusal.isEmpty() && isConfirmed(backup);
    });
    if (!refusal.isEmpty())
        runtime::warn(refusal);
    if (!isLookedAt || !mayGoOn)
        return DetailsSave::NotSaved;
    const bool isStale = needsScoring();
    // Ahead of the write: an exam that a kill leaves renamed is known, too.
    if (name != m_exam)
        library::renameInNotes(m_library.Conn.path(), m_exam, name);
    bool isWritten = false;
    {
        const library::BackupBeforeWrite copy(m_library, progress, backup,
                                              {u"考试信息 "_s + m_exam});
        isWritten = unlessRefused(detailsTrap, [&] { write(); });
    }
    progress.finish();
    if (!isWritten)
        return DetailsSave::NotSaved;
    load(name);
    detailsTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    return isStale ? offerScoring(progress) : DetailsSave::Saved;
}

void ExamDetails::write() const
{
    database::WriteBatch batch(m_library.Conn);
    const Stored now = read(m_exam);
    if (now.rows.empty())
        throw goneError(m_exam);
    if (now != m_stored)
        throw Refusal(u"打开以后，别的程序改动了这次考试的信息，没有保存。"
                      "请关闭后重新打开，看过现在的内容再改。"_s);
    const std::vector<Change> changes = changedCells();
    for (const Row& row : m_stored.rows)
        writeRow(row, changes);
    if (name != m_exam) {
        const QString taken = renameFault(m_library.Conn, m_exam, name);
        if (!taken.isEmpty())
            throw Refusal(taken);
        renameExam(m_library.Conn, m_exam, name);
    }
    batch.commit();
}

void ExamDetails::writeRow(const Row& row, const std::vector<Change>& changes) const
{
    database::Recordset rows;
    rows.Open(u"select * from 考试名称表 where rowid=?"_s, {row.id}, m_library.Conn);
    for (const Change& change : changes) {
        if (change.row.id != row.id)
            continue;
        runtime::Value value;
        if (!change.after.isEmpty())
            value = change.item.kind == Kind::FullMark
                        ? runtime::Value(float(runtime::Val(change.after)))
                        : runtime::Value(change.after);
        rows.Fields(change.item.column).setValue(value);
    }
    rows.Update();
}

bool ExamDetails::needsScoring() const
{
    return std::ranges::any_of(
        changedCells(), [](const Change& change) { return change.item.kind != Kind::Remark; });
}

DetailsSave ExamDetails::offerScoring(runtime::Progress& progress)
{
    const int button = runtime::choose(
        {.text = u"已保存。满分或公式变了，“%1”的总分、名次、Z分和T分还是按原来的算的。\n"
                 "现在重新计算吗？"_s.arg(shownName(m_exam)),
         .buttons = {u"重新计算"_s, u"以后再算"_s},
         .safe = 1,
         .title = title});
    bool isScored = false;
    if (button == 0)
        isScored = scoring::Scoring(m_library).score(m_exam, progress);
    progress.finish();
    if (isScored)
        return DetailsSave::Scored;
    runtime::MsgBox(
        u"“%1”的总分、名次、Z分和T分还是旧的。请在考试列表里选中它，再按“计算总分”。"_s.arg(
            shownName(m_exam)));
    return DetailsSave::Stale;
}

} // namespace maintenance
