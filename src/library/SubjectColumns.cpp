#include "library/SubjectColumns.h"

#include "library/ColumnNames.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

const QString rank = u"ALTER TABLE 成绩表 add COLUMN %1 long"_s;

} // namespace

std::vector<AddedColumn> addedColumns(const QString& subject)
{
    const QString score = u"ALTER TABLE 成绩表 add COLUMN %1 Single"_s;
    const QString standardScore = u"ALTER TABLE 成绩表 add COLUMN %1 Double"_s;
    const QString fullMark = u"ALTER TABLE 考试名称表 add COLUMN %1 Single"_s;
    const QString formula = u"ALTER TABLE 考试名称表 add COLUMN %1 text(50)"_s;
    return {{score, subject},
            {rank, gradeRankColumn(subject)},
            {rank, classRankColumn(subject)},
            {standardScore, zScoreColumn(subject)},
            {standardScore, tScoreColumn(subject)},
            {isTotal(subject) ? formula : fullMark, subject},
            {u"ALTER TABLE 教师表 add COLUMN %1 text(50)"_s, subject}};
}

std::vector<AddedColumn> addedTRank(const QString& subject)
{
    if (!isTotal(subject))
        return {};
    return {{rank, tRankColumn(subject)}};
}

const QStringList& subjectTables()
{
    static const QStringList tables{u"成绩表"_s, u"考试名称表"_s, u"教师表"_s};
    return tables;
}

} // namespace library
