#include "statistics/ExamRows.h"

#include <limits>
#include <map>

#include "platform/database/SqlPieces.h"

namespace statistics {

namespace {

std::vector<double> arranged(const scoring::TableColumn& column, const std::vector<size_t>& rows)
{
    std::vector<double> values;
    values.reserve(rows.size());
    for (const size_t row : rows)
        values.push_back(column.isNull(row) ? std::numeric_limits<double>::quiet_NaN()
                                            : column.value(row));
    return values;
}

} // namespace

ExamRows::ExamRows(database::Connection& connection, const QString& exam, const QString& stream,
                   const scoring::TableScope& scope)
{
    const scoring::ExamTable table(connection, exam, stream, scope);
    m_rowCount = table.rowCount();
    const std::vector<size_t> rows = classByClass(table.classes());
    for (const QString& name : scope.columns) {
        if (const scoring::TableColumn* column = table.column(name))
            m_columns.insert(name.toCaseFolded(), arranged(*column, rows));
    }
}

/// The rows of each class behind one another, and behind them all those without a class.
std::vector<size_t> ExamRows::classByClass(const std::vector<double>& classOfRow)
{
    std::map<double, std::vector<size_t>> rowsOfClass;
    std::vector<size_t> classless;
    for (size_t row = 0; row < classOfRow.size(); ++row)
        (std::isnan(classOfRow[row]) ? classless : rowsOfClass[classOfRow[row]]).push_back(row);
    std::vector<size_t> order;
    order.reserve(classOfRow.size());
    for (const auto& [number, rows] : rowsOfClass) {
        m_classes[number] = {order.size(), rows.size()};
        order.insert(order.end(), rows.begin(), rows.end());
    }
    order.insert(order.end(), classless.begin(), classless.end());
    return order;
}

ExamRows::Place ExamRows::ofClass(double classNumber) const
{
    const auto found = m_classes.find(classNumber);
    return found == m_classes.end() ? Place() : found->second;
}

const double* ExamRows::column(const QString& name) const
{
    if (!database::isBareName(name))
        return nullptr;
    const auto found = m_columns.constFind(name.toCaseFolded());
    return found == m_columns.constEnd() ? nullptr : found->data();
}

} // namespace statistics
