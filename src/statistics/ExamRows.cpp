#include "statistics/ExamRows.h"

#include <cmath>

#include "statistics/Condition.h"

namespace statistics {

ExamRows::ExamRows(database::Connection& connection, const QString& exam, const QString& stream,
                   const scoring::TableScope& scope)
    : m_table(connection, exam, stream, scope)
{
    const std::vector<double>& classes = m_table.classes();
    for (size_t row = 0; row < classes.size(); ++row) {
        if (!std::isnan(classes[row]))
            m_classes[classes[row]].push_back(row);
    }
}

const std::vector<size_t>& ExamRows::ofClass(double classNumber) const
{
    static const std::vector<size_t> none;
    const auto found = m_classes.find(classNumber);
    return found == m_classes.end() ? none : found->second;
}

const scoring::TableColumn* ExamRows::column(const QString& name)
{
    return isBareName(name) ? m_table.column(name) : nullptr;
}

} // namespace statistics
