#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"

namespace oldlibraries {

/// Findings of one kind that are told one by one; more of them are told as a number.
inline constexpr qint64 mostFindingsOfKind = 1000;
/// So many characters of a value stand in a finding: a thousand memos of 2 MB would fill the
/// memory.
inline constexpr qsizetype longestFindingValue = 1000;

/// The value for a finding: of a long one the beginning with "…" behind it.
QString shownValue(const QString& value);

/// The faults of one kind in a table. The first of them are listed, the others counted.
class FaultKind
{
public:
    /// `done` is the sentence of each finding, `column` that of the line which counts.
    FaultKind(QString table, QString done, QString column = {})
        : m_table(std::move(table)), m_done(std::move(done)), m_column(std::move(column))
    {
    }

    /// True if the next one is listed too, so that its value is worth looking up.
    bool isListed() const { return m_count < mostFindingsOfKind; }
    void add(qint64 row, const QString& column, const QString& value = {});

    /// Adds those that are listed, and a line that counts the others.
    void tell(std::vector<Finding>& findings) const;

private:
    QString m_table;
    QString m_done;
    QString m_column;
    std::vector<Finding> m_listed;
    qint64 m_count = 0;
};

} // namespace oldlibraries
