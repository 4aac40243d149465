#include "library/ColumnNames.h"

namespace library {

using namespace Qt::StringLiterals;

const QString ScoreFamily = u"原始分和名次"_s;
const QString ZScoreFamily = u"Z分"_s;
const QString TScoreFamily = u"T分"_s;
const QString AllStreams = u"全"_s;
const QString GrandTotal = u"总分"_s;

namespace {

const QString gradeRank = u"年名"_s;

} // namespace

QString gradeRankColumn(const QString& column)
{
    return column + gradeRank;
}

QString classRankColumn(const QString& column)
{
    return column + u"班名"_s;
}

QString zScoreColumn(const QString& column)
{
    return column + u"Z分"_s;
}

QString tScoreColumn(const QString& column)
{
    return column + u"T分"_s;
}

QString tRankColumn(const QString& total)
{
    return gradeRankColumn(tScoreColumn(total));
}

QStringList columnsOf(const QString& column)
{
    return {column,
            gradeRankColumn(column),
            classRankColumn(column),
            zScoreColumn(column),
            tScoreColumn(column),
            tRankColumn(column)};
}

bool isGradeRankColumn(const QString& column)
{
    return column.endsWith(gradeRank);
}

bool isTotal(const QString& column)
{
    return column.endsWith(GrandTotal);
}

} // namespace library
