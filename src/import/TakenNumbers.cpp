#include "import/TakenNumbers.h"

#include "import/WorkbookIntake.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

/// As many are named in the question.
constexpr int namedRows = 3;

bool holdsNothing(const Value& cell)
{
    return isEmptyCell(cell) || cell.kind() == Value::Kind::Error;
}

} // namespace

std::optional<std::pair<double, double>> TakenNumbers::numberOn(const excel::Worksheet& sheet,
                                                                int row)
{
    const Value classCell = sheet.Cells(row, 1);
    const Value numberCell = sheet.Cells(row, 2);
    if (holdsNothing(classCell) || holdsNothing(numberCell))
        return std::nullopt;
    return std::pair(runtime::Val(classCell), runtime::Val(numberCell));
}

TakenNumbers::TakenBy TakenNumbers::takenBy(int row)
{
    const auto number = numberOn(m_sheet, row);
    if (!number)
        return TakenBy::Nobody;
    if (m_known.find(number->first, number->second) != nullptr)
        return TakenBy::Library;
    const qsizetype listed = m_listed.size();
    m_listed.insert(*number);
    return m_listed.size() > listed ? TakenBy::Nobody : TakenBy::List;
}

TakenCount::TakenCount(const excel::Worksheet& sheet, database::Connection& connection, int first,
                       int end)
    : m_rows(end - first)
{
    TakenNumbers numbers(sheet, connection);
    for (int row = first; row < end; ++row) {
        const TakenNumbers::TakenBy taken = numbers.takenBy(row);
        if (taken != TakenNumbers::TakenBy::Nobody)
            note(taken == TakenNumbers::TakenBy::Library ? m_byLibrary : m_byList, sheet, row);
    }
}

void TakenCount::note(Rows& rows, const excel::Worksheet& sheet, int row)
{
    if (++rows.count > namedRows)
        return;
    const auto numberOf = [&](int column) {
        return runtime::doubleText(runtime::Val(sheet.Cells(row, column)));
    };
    rows.first.append(
        u"%1 班 %2 号 %3"_s.arg(numberOf(1), numberOf(2), sheet.Cells(row, 3).text().left(20)));
}

QString TakenCount::named(const Rows& rows)
{
    return rows.first.join(u'、') + (rows.count > namedRows ? u" …"_s : QString());
}

QString TakenCount::question() const
{
    QStringList lines;
    if (m_byLibrary.count > 0)
        lines.append(u"名单中有 %1 人的班级和学号在成绩库里已经有了（%2）。"_s.arg(
            QString::number(m_byLibrary.count), named(m_byLibrary)));
    if (m_byList.count > 0)
        lines.append(u"名单中有 %1 人的班级和学号在名单的前面已经有了（%2）。"_s.arg(
            QString::number(m_byList.count), named(m_byList)));
    lines.append(u"\n跳过已有：不导入这些人，只导入其余的 %1 人。"_s.arg(m_rows - m_byLibrary.count
                                                                         - m_byList.count));
    lines.append(u"全部添加：全部导入，这样的班级和学号就会有两条以上的记录。"_s);
    return lines.join(u'\n');
}

} // namespace importing
