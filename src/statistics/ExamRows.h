#pragma once

#include <unordered_map>

#include "scoring/ExamTable.h"

namespace statistics {

/// The rows of one exam and stream that the category filter lets through, read once and kept column
/// by column, class by class, so that the values of a class stand side by side.
class ExamRows
{
public:
    /// Where a class stands in each column.
    struct Place
    {
        size_t first = 0;
        size_t count = 0;
    };

    /// Throws database::Error.
    ExamRows(database::Connection& connection, const QString& exam, const QString& stream,
             const scoring::TableScope& scope);

    /// No rows for a class that the exam does not have.
    Place ofClass(double classNumber) const;
    size_t rowCount() const { return m_rowCount; }

    /// The values of a column, within a class in row order, NaN for NULL. nullptr if 成绩表 has no
    /// such numeric column, or if SQL could not name it without brackets.
    const double* column(const QString& name) const;

private:
    std::vector<size_t> classByClass(const std::vector<double>& classOfRow);

    size_t m_rowCount;
    std::unordered_map<double, Place> m_classes;
    QHash<QString, std::vector<double>> m_columns;
};

} // namespace statistics
