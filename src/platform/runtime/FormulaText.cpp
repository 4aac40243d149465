#include "platform/runtime/FormulaText.h"

#include <algorithm>

namespace runtime {

using namespace Qt::StringLiterals;

namespace {

bool isNumberOf(QStringView letters)
{
    const bool digitsAndPoint = std::all_of(letters.begin(), letters.end(), [](QChar letter) {
        return (letter >= u'0' && letter <= u'9') || letter == u'.';
    });
    return digitsAndPoint && letters.count(u'.') <= 1 && letters != u"." && !letters.isEmpty();
}

} // namespace

bool looksLikeFormula(const QString& text)
{
    const QStringView typed = QStringView(text).trimmed();
    if (typed.isEmpty() || !u"=+-@＝＋－＠"_s.contains(typed.front()))
        return false;
    return typed.front() != u'-' || !isNumberOf(typed.mid(1));
}

} // namespace runtime
