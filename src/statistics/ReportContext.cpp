#include "statistics/ReportContext.h"

#include "library/ColumnNames.h"

namespace statistics {

const ExamRows& ReportContext::rows(const QString& exam, const QString& stream)
{
    const QString& filter = library.settings.CategoryFilter;
    std::unique_ptr<ExamRows>& known = m_rows[{exam, stream, filter}];
    if (!known) {
        scoring::TableScope scope{filter, {}};
        for (const QString& column : std::as_const(library.catalogue.AllColumns))
            scope.columns << column << library::gradeRankColumn(column);
        known = std::make_unique<ExamRows>(library.Conn, exam, stream, scope);
    }
    return *known;
}

} // namespace statistics
