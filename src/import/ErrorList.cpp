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

} // namespace

QString ErrorList::countText() const
{
    return u"共发现 "_s + runtime::singleText(m_state.ErrorCount) + u" 处成绩有问题！"_s;
}

ErrorList::Entry ErrorList::answer(int row, const QString& text)
{
    const Trap trap{" - Private Sub Text1_KeyDown/Formgf"};
    if (text.isEmpty())
        return Entry::Ignored;
    const double score = runtime::Val(text);
    float full = 0;
    trap([&] { full = fullMark(m_state.errors.TextMatrix(row, subjectColumn)); });
    if (score < 0 || float(score) > full) {
        MsgBox(u"输入分数有误，请重新输入！"_s, u"错误"_s, Buttons::Ok, Icon::Critical);
        return Entry::Refused;
    }
    // The import relies on the bad cell keeping its text: the value goes to this one cell instead.
    const int cell = int(m_state.KMImport.size()) + 1;
    trap([&] { m_state.MFGData.setTextMatrix(cell, cell, runtime::doubleText(score)); });
    trap([&] { m_state.errors.setTextMatrix(row, ReasonColumn, {}); });
    return Entry::Accepted;
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
