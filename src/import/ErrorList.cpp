#include "import/ErrorList.h"

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Buttons;
using runtime::Icon;
using runtime::MsgBox;
using runtime::Trap;

namespace {

constexpr int subjectColumn = 3;
const Trap entryTrap{" - Private Sub Text1_KeyDown/Formgf"};

} // namespace

QString ErrorList::countText() const
{
    return u"共发现 "_s + runtime::singleText(m_state.ErrorCount) + u" 处成绩有问题！"_s;
}

ErrorList::Entry ErrorList::answer(int row, const QString& text)
{
    if (text.isEmpty())
        return Entry::Ignored;
    const double score = runtime::Val(text);
    float full = 0;
    entryTrap([&] { full = fullMark(m_state.errors.TextMatrix(row, subjectColumn)); });
    if (score < 0 || float(score) > full) {
        MsgBox(u"输入分数有误，请重新输入！"_s, u"错误"_s, Buttons::Ok, Icon::Critical);
        return Entry::Refused;
    }
    store(m_answers.emplace_back(Answer{row, runtime::doubleText(score)}));
    entryTrap([&] { m_state.errors.setTextMatrix(row, ReasonColumn, {}); });
    return Entry::Accepted;
}

ImportState::Cell ErrorList::cellFor(int row) const
{
    if (m_destination == Destination::BadCells)
        return m_state.badCells.at(size_t(row - 1));
    const int place = int(m_state.KMImport.size()) + 1;
    return {place, place};
}

void ErrorList::store(const Answer& answer)
{
    entryTrap([&] {
        const ImportState::Cell cell = cellFor(answer.row);
        m_overwritten.push_back({cell, m_state.MFGData.TextMatrix(cell.row, cell.column)});
        m_state.MFGData.setTextMatrix(cell.row, cell.column, answer.score);
    });
}

void ErrorList::takeBack()
{
    for (; !m_overwritten.empty(); m_overwritten.pop_back()) {
        const auto& [cell, text] = m_overwritten.back();
        m_state.MFGData.setTextMatrix(cell.row, cell.column, text);
    }
}

void ErrorList::setDestination(Destination destination)
{
    if (m_destination == destination)
        return;
    takeBack();
    m_destination = destination;
    for (const Answer& answer : m_answers)
        store(answer);
}

QString ErrorList::note() const
{
    if (m_destination == Destination::BadCells)
        return u"确认过的分值代替表格里的分值存入成绩库；没有改的仍按表格保存。"_s;
    QString kept = u"这些成绩仍按表格里的内容存入成绩库（空白存成 0），改了也不起作用。"_s;
    const grid::FlexGrid& staging = m_state.MFGData;
    const int place = int(m_state.KMImport.size()) + 1;
    if (place >= staging.Rows() || place >= staging.Cols()
        || staging.TextMatrix(place, 0).isEmpty())
        return kept;
    return kept
           + u"注意：最后确认的分值会写到 %1 班 %2 号 %3 的“%4”里，代替那里原来的内容。"_s.arg(
               staging.TextMatrix(place, 0), staging.TextMatrix(place, 1),
               staging.TextMatrix(place, 2), staging.TextMatrix(0, place));
}

float ErrorList::fullMark(const QString& subject) const
{
    float full = 0;
    for (const ImportSubject& known : m_state.KMImport) {
        if (known.KMName == subject)
            full = known.KMFull;
    }
    return full;
}

std::optional<int> ErrorList::finish() const
{
    const int count = int(m_state.ErrorCount);
    for (int row = 1; row <= count; ++row) {
        if (m_state.errors.TextMatrix(row, ReasonColumn).isEmpty())
            continue;
        MsgBox(u"至少有一项成绩还没有修改！"_s);
        return row;
    }
    return std::nullopt;
}

} // namespace importing
