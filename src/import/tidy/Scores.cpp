#include "import/tidy/Scores.h"

#include <algorithm>
#include <cmath>

#include <QRegularExpression>

#include "platform/runtime/Numbers.h"
#include "platform/runtime/PlainNumber.h"

namespace tidy {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

/// Half width, without blanks; capitals and brackets stay.
QString plainText(const QString& text)
{
    return withoutBlanks(halfWidth(text));
}

/// Other systems write -1 for who was absent.
ScoreCell numberCell(double number)
{
    if (number >= 0)
        return {ScoreCell::Kind::Number, number};
    return {ScoreCell::Kind::Mark, number, runtime::doubleText(number)};
}

const QString absent = u"缺考"_s;
const QString cheated = u"作弊"_s;

} // namespace

ScoreCell scoreIn(const Value& cell)
{
    static const QRegularExpression number(u"^[+-]?(\\d+\\.?\\d*|\\.\\d+)分?$"_s);
    static const QRegularExpression beginsWithNumber(u"^[+-]?\\.?\\d"_s);
    if (cell.isNumber())
        return numberCell(cell.toDouble());
    const QString written = cell.text();
    const auto plain = runtime::plainNumber(
        std::u16string_view(QStringView(written).utf16(), size_t(written.size())));
    if (plain)
        return numberCell(*plain);
    QString text = plainText(written);
    if (cell.kind() == Value::Kind::Date)
        return {ScoreCell::Kind::Odd, 0, written};
    if (number.match(text).hasMatch()) {
        text.remove(u'分');
        return numberCell(text.toDouble());
    }
    if (beginsWithNumber.match(text).hasMatch())
        return {ScoreCell::Kind::Odd, 0, written};
    return {ScoreCell::Kind::Mark, 0, text};
}

MarkCounts::MarkCounts(const std::vector<Mark>& former, const Aliases& aliases) : m_aliases(aliases)
{
    for (const Mark& mark : former) {
        if (mark.decidedBy == DecidedBy::Program)
            continue;
        Mark kept = mark;
        kept.count = 0;
        kept.isOpen = false;
        m_marks.insert(mark.text, kept);
    }
}

Mark MarkCounts::read(const QString& text) const
{
    const QString name = text.isEmpty() ? absent : m_aliases.nameOf(text);
    if (name == absent || text == absent)
        return {.text = text, .use = MarkUse::Absent};
    if (name == cheated || text == cheated)
        return {.text = text, .use = MarkUse::Cheated};
    return {.text = text, .use = MarkUse::AsItStands, .isOpen = true};
}

Mark& MarkCounts::count(const QString& text)
{
    auto found = m_marks.find(text);
    if (found == m_marks.end())
        found = m_marks.insert(text, read(text));
    ++found->count;
    return *found;
}

std::vector<Mark> MarkCounts::marks() const
{
    std::vector<Mark> all(m_marks.cbegin(), m_marks.cend());
    std::sort(all.begin(), all.end(), [](const Mark& a, const Mark& b) {
        return a.count != b.count ? a.count > b.count : a.text < b.text;
    });
    return all;
}

} // namespace tidy
