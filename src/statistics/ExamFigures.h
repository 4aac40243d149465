#pragma once

#include <optional>

#include "platform/runtime/Trap.h"
#include "platform/runtime/Value.h"
#include "statistics/Figure.h"
#include "statistics/ReportContext.h"
#include "statistics/Tally.h"

namespace statistics {

/// The figures of one exam and stream, class by class, under the category filter. They are computed
/// on the exam's rows; what those cannot answer (a column that is missing, a condition that is no
/// comparison) goes to the engine as one statement a figure, so that a failing one costs its
/// message and the others stand.
class ExamFigures
{
public:
    /// One figure that is asked for class by class; its columns are looked up once.
    class ClassFigure
    {
    public:
        /// Nothing if it is NULL, or if it failed.
        std::optional<double> operator()(double classNumber) const;

        /// What its cells stand for.
        Meaning meaning() const;

    private:
        friend class ExamFigures;

        /// Values between two numbers, both included, in one column.
        struct Test
        {
            const double* values = nullptr;
            double low = 0;
            double high = 0;

            /// NULL is NaN, which lies between no numbers.
            bool holds(size_t row) const { return values[row] >= low && values[row] <= high; }
        };

        explicit ClassFigure(ExamFigures& figures, Condition condition);
        /// Looks up what the condition needs; false if the rows cannot answer it.
        bool findTests();
        void narrow(const double* values, const Comparison& comparison);
        bool passes(size_t row) const;
        double countRows(ExamRows::Place place) const;
        std::optional<double> aggregateRows(ExamRows::Place place) const;
        /// What the engine says; nothing for NULL, or after its message.
        std::optional<double> ask(double classNumber) const;
        double askCount(double classNumber) const;
        std::optional<double> askAggregate(double classNumber) const;

        ExamFigures& m_figures;
        Condition m_condition;
        std::vector<Test> m_tests;
        /// Nothing where rows are counted.
        std::optional<Aggregate> m_aggregate;
        QString m_column;
        const double* m_values = nullptr;
        bool m_onRows = false;
    };

    ExamFigures(ReportContext& context, QString exam, QString stream, const runtime::Trap& trap);

    /// How many rows of a class meet the condition, which is about `column`.
    ClassFigure rowCount(const Condition& condition, const QString& column = {});

    /// An aggregate over a column in a class.
    ClassFigure figure(Aggregate aggregate, const QString& column, const Condition& condition = {});

    /// The largest value of a column in the whole stream. Nothing if it is NULL, or if it failed.
    std::optional<double> highest(const QString& column);

    /// The marks in a column of those of the class who sat, in row order.
    std::vector<double> taken(const QString& column, double classNumber);

    /// What a count of taken() stands for, of those that the condition holds for.
    Meaning takenMeaning(const QString& column, const QString& condition);

    const QString& exam() const { return m_exam; }

private:
    const ExamRows* rows();
    /// nullptr where only the engine can answer.
    const double* valuesOf(const QString& column);
    /// Opens the rows of a class that meet the condition. Throws Error, as firstField does.
    void openRows(database::Recordset& rows, const QString& condition, double classNumber);
    /// The first field of the first row; nothing for NULL.
    std::optional<double> firstField(const QString& sql, const std::vector<runtime::Value>& values);
    std::optional<double> askHighest(const QString& column);

    ReportContext& m_context;
    QString m_exam;
    QString m_stream;
    const runtime::Trap& m_trap;
    const ExamRows* m_rows = nullptr;
};

/// A number as a cell shows it: two decimals, a value half way to the even neighbour.
QString figureText(double number);

} // namespace statistics
