#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"

namespace oldlibraries {

/// The faults of one kind in a table. The first of them are listed, the others counted.
class FaultKind
{
public:
    /// `done` is the sentence of each finding.
    FaultKind(QString table, QString done) : m_table(std::move(table)), m_done(std::move(done)) {}

    /// True if the next one is listed too, so that its value is worth looking up.
    bool isListed() const { return m_count < mostFindingsOfKind; }
    void add(qint64 row, const QString& column, const QString& value = {});

    /// Adds those that are listed, and a line that counts the others.
    void tell(std::vector<Finding>& findings) const;

private:
    QString m_table;
    QString m_done;
    std::vector<Finding> m_listed;
    qint64 m_count = 0;
};

} // namespace oldlibraries
