#pragma once

#include <vector>

#include <QStringList>

#include "platform/database/ColumnDeclaration.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// The columns of one table as they shall be: first those that keep their places, then the known
/// ones, then the rest.
///
/// In most tables all that are there keep their places, and what is missing comes behind them; a
/// table that lacks a key is made anew and has the usual order. In tables that the program reaches
/// by place none keeps its own, but a column of another name counts as one that the program never
/// calls by name. Of 考试名称表 only the place is asked for where the subjects begin, so that all
/// ahead of these stay.
class ColumnPlan
{
public:
    using Columns = std::vector<database::ColumnDeclaration>;

    /// `known` are the columns of the empty library's table. Throws database::Error.
    ColumnPlan(database::Connection& library, const QString& table, Columns known);

    /// Known ones that the table lacks.
    const QStringList& missing() const { return m_missing; }
    const Columns& wanted() const { return m_wanted; }
    /// The column that numbered the rows until another one came; "" for none.
    const QString& formerNumber() const { return m_formerNumber; }
    /// What is missing goes behind all others.
    bool onlyAppends() const;

private:
    bool lacksKey() const;
    Columns kept(const Columns& ahead) const;
    void want(const database::ColumnDeclaration& column);
    database::ColumnDeclaration presentOrMissing(const database::ColumnDeclaration& known,
                                                 Columns& strange);
    void keepOneNumber();

    QString m_table;
    Columns m_present;
    Columns m_known;
    Columns m_wanted;
    QStringList m_missing;
    QString m_formerNumber;
};

} // namespace oldlibraries
