#pragma once

#include <optional>

#include "platform/runtime/Trap.h"
#include "platform/runtime/Value.h"
#include "statistics/Condition.h"
#include "statistics/ReportContext.h"

namespace statistics {

enum class Aggregate { Count, Average, Maximum, Minimum, Deviation };

/// The figures of one exam and stream, class by class, under the category filter. They are computed
/// on the exam's rows; what those cannot answer (a column that is missing, a condition that is no
/// comparison) goes to the engine as one statement a figure, so that a failing one costs its
/// message and the others stand.
class ExamFigures
{
public:
    ExamFigures(ReportContext& context, QString exam, QString stream, const runtime::Trap& trap);

    /// How many rows of the class meet the condition. Nothing if it failed.
    std::optional<double> rowCount(double classNumber, const Condition& condition);

    /// An aggregate over a column in the class. Nothing if it is NULL, or if it failed.
    std::optional<double> figure(Aggregate aggregate, const QString& column, double classNumber,
                                 const Condition& condition = {});

    /// The largest value of a column in the whole stream, likewise.
    std::optional<double> highest(const QString& column);

    /// The values of 0 and more of a column in the class, in row order.
    std::vector<double> taken(const QString& column, double classNumber);

    const QString& exam() const { return m_exam; }

private:
    struct Test
    {
        const scoring::TableColumn* column;
        Comparison comparison;
    };

    ExamRows* rows();
    /// Nothing if the rows cannot answer the condition.
    std::optional<std::vector<Test>> tests(const Condition& condition);
    std::optional<double> ask(const QString& sql);
    QString placeSql() const;

    ReportContext& m_context;
    QString m_exam;
    QString m_stream;
    const runtime::Trap& m_trap;
    ExamRows* m_rows = nullptr;
};

/// A number as a cell shows it: two decimals, a value half way to the even neighbour.
QString figureText(double number);

} // namespace statistics
