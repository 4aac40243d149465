#pragma once

#include <QString>
#include <QStringList>

#include "platform/database/Connection.h"

namespace library {

/// The setting that names the exams of a comparison, and what a setting says for all that there
/// are.
extern const QString ComparedExams;
extern const QString AllOfThem;

enum class Joiner { And = 1, Or = 2 };
enum class Quote { None = 1, Single = 2 };

/// Reads the analysis settings that the library carries. Failures are shown with the routine's tag.
class Settings
{
public:
    explicit Settings(database::Connection& connection) : m_conn(connection) {}

    /// Condition on 类别代码 with " and (" in front, or empty; set by GetTJLB and by the workbench,
    /// appended to the WHERE clause of every statistic.
    QString CategoryFilter;
    /// The columns that the workbench chose last, in order; 自定义显示 ticks them.
    QStringList DisplayItems;
    /// T = TFactor · z + TOffset, as the last readable setting "T分" said when an exam was scored;
    /// another library that is opened finds them as they are.
    double TFactor = 0;
    double TOffset = 0;

    /// 设置 of the row of that name, or "".
    QString GetSZ(const QString& name);
    /// 加入综合分析 of the row of that name, or "".
    QString GetSZJR(const QString& name);
    /// The per-subject condition as SQL, such as "语文>=90 and 语文<100", or "".
    QString GetXXSZ(const QString& name, const QString& stream, const QString& subject);
    /// Sets CategoryFilter from 参与统计的学生类别代码.
    void GetTJLB();
    /// `field`=token for each token of `text`, joined.
    QString GetSouSuoChuan(const QString& text, const QString& separator, const QString& field,
                           Joiner joiner, Quote quote);
    /// The columns of the stored selection of that name, in its order; columns that are gone drop
    /// out. None without such a selection.
    QStringList GetZDYXS(const QString& name);
    /// The names of the stored selection of that name as they stand in it, also those of columns
    /// that are gone. Throws Error.
    QStringList storedColumns(const QString& name);
    /// Those of the names that columns of 成绩表 have, in their order. Throws Error.
    QStringList scoreColumns(const QStringList& names);

private:
    database::Connection& m_conn;
};

/// The codes of the categories that a CategoryFilter lets through, in its order; none for "".
QStringList categoriesIn(const QString& filter);

} // namespace library
