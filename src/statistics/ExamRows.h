#pragma once

#include <unordered_map>

#include "scoring/ExamTable.h"

namespace statistics {

/// The rows of one exam and stream that the category filter lets through, read once, grouped by
/// class.
class ExamRows
{
public:
    /// Throws database::Error.
    ExamRows(database::Connection& connection, const QString& exam, const QString& stream,
             const scoring::TableScope& scope);

    /// Rows of a class in row order; none for a class that the exam does not have.
    const std::vector<size_t>& ofClass(double classNumber) const;
    size_t rowCount() const { return m_table.rowCount(); }

    /// nullptr if 成绩表 has no such numeric column, or if SQL could not name it without brackets.
    const scoring::TableColumn* column(const QString& name);

private:
    scoring::ExamTable m_table;
    std::unordered_map<double, std::vector<size_t>> m_classes;
};

} // namespace statistics
