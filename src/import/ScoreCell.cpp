#include "import/ScoreCell.h"

#include <cmath>

#include "import/BadScore.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Value;

ScoreCell ScoreCells::read(const Value& cell, float fullMark)
{
    const double score = runtime::Val(cell);
    return {cell.kind() == Value::Kind::Double ? textOf(score) : cell.text(), score,
            badScoreReason(cell, score, fullMark)};
}

QString ScoreCells::textOf(double number)
{
    const double halves = number * 2;
    if (!(halves >= 0 && halves < double(m_halfTexts.size())) || halves != std::trunc(halves))
        return runtime::doubleText(number);
    QString& text = m_halfTexts[size_t(halves)];
    if (text.isNull())
        text = runtime::doubleText(number);
    return text;
}

double storedScore(const QString& text)
{
    constexpr double absent = -1;
    return text == u"缺考"_s ? absent : runtime::Val(text);
}

} // namespace importing
