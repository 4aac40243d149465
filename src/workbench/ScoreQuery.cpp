#include "workbench/ScoreQuery.h"

namespace workbench {

using namespace Qt::StringLiterals;

namespace {

/// One condition that a row meets if it has any of the values; `joiner` in front. "" without
/// values.
QString anyOf(const QStringList& values, const QString& head, const QString& tail,
              const QString& joiner)
{
    QStringList conditions;
    for (const QString& value : values)
        conditions.append(head + value + tail);
    return conditions.isEmpty() ? QString() : joiner + u" ("_s + conditions.join(u" or "_s) + u')';
}

QString orderClause(const std::vector<SortKey>& order)
{
    QStringList keys;
    for (const SortKey& key : order)
        keys.append(key.column
                    + (key.direction == SortDirection::Descending ? u" DESC"_s : u" ASC"_s));
    return keys.isEmpty() ? QString() : u" order by "_s + keys.join(u',');
}

QString rowsOf(const RowChoice& choice, const QString& examCondition)
{
    if (choice.exams.isEmpty())
        return u"请选择 考试名称！"_s;
    if (choice.classes.isEmpty())
        return u"请选择 要导出成绩的 班级！\""_s;
    return u"select * from 成绩表 where "_s + examCondition
           + anyOf(choice.classes, u" 班级="_s, {}, u" and"_s)
           + categoryCondition(choice.categories) + orderClause(choice.order);
}

} // namespace

QString categoryCondition(const QStringList& categories)
{
    return anyOf(categories, u"类别代码="_s, {}, u" and"_s);
}

QString rowsSql(const RowChoice& choice)
{
    return rowsOf(choice, anyOf(choice.exams, u" 考试名称='"_s, u"'"_s, {}));
}

BoundSql boundRowsSql(const RowChoice& choice)
{
    const QStringList places(choice.exams.size(), u"?"_s);
    BoundSql bound{rowsOf(choice, anyOf(places, u" 考试名称="_s, {}, {})), {}};
    // Without a class the text is a sentence that has no places.
    if (!choice.classes.isEmpty())
        bound.values.assign(choice.exams.begin(), choice.exams.end());
    return bound;
}

} // namespace workbench
