#include "individual/RankKind.h"

#include "library/ColumnNames.h"

namespace individual {

using namespace Qt::StringLiterals;

QString rankColumn(const QString& column, RankKind kind)
{
    return kind == RankKind::Grade ? library::gradeRankColumn(column)
                                   : library::classRankColumn(column);
}

QString rankCaption(RankKind kind)
{
    return kind == RankKind::Grade ? u"年级名次"_s : u"班级名次"_s;
}

} // namespace individual
