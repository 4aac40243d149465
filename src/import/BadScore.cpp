#include "import/BadScore.h"

#include "import/WorkbookIntake.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Value;

QString badScoreReason(const Value& cell, double score, float fullMark)
{
    if (cell.kind() == Value::Kind::Error || isEmptyCell(cell))
        return u"分值不能为空"_s;
    if (score < 0)
        return u"分值不能为负"_s;
    if (float(score) > fullMark)
        return u"超过总分"_s;
    return {};
}

} // namespace importing
