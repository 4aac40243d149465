#pragma once

#include <vector>

#include <QString>
#include <QStringList>

#include "platform/runtime/Value.h"

namespace workbench {

enum class SortDirection { Ascending, Descending };

struct SortKey
{
    QString column;
    SortDirection direction = SortDirection::Ascending;
};

/// So many columns can be sorted by at once.
inline constexpr int MostSortKeys = 4;

/// Which score rows are wanted, and in which order.
struct RowChoice
{
    QStringList exams;
    /// Class numbers as texts.
    QStringList classes;
    /// Values of 类别代码 as texts; none stands for all.
    QStringList categories;
    std::vector<SortKey> order;
};

/// The condition on the category, with " and" in front; "" for all categories. It is also what
/// narrows the statistics (Settings::CategoryFilter).
QString categoryCondition(const QStringList& categories);

/// The statement that gives the rows. Without an exam, or without a class, it is the sentence that
/// asks for one.
QString rowsSql(const RowChoice& choice);

/// A statement with question marks in the places of its values.
struct BoundSql
{
    QString sql;
    std::vector<runtime::Value> values;
};

/// rowsSql as it is run: the names of exams are values, whatever they hold.
BoundSql boundRowsSql(const RowChoice& choice);

} // namespace workbench
