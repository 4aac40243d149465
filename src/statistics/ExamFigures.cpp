#include "statistics/ExamFigures.h"

#include <limits>

#include "platform/database/Recordset.h"
#include "platform/runtime/Deviation.h"
#include "platform/runtime/Numbers.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;

namespace {

QString functionName(Aggregate aggregate)
{
    switch (aggregate) {
    case Aggregate::Count:
        return u"count"_s;
    case Aggregate::Average:
        return u"Avg"_s;
    case Aggregate::Maximum:
        return u"max"_s;
    case Aggregate::Minimum:
        return u"min"_s;
    case Aggregate::Deviation:
        return u"stdev"_s;
    }
    return {};
}

/// Takes the values of one figure, in row order, as the engine's aggregates do.
class Collector
{
public:
    explicit Collector(Aggregate aggregate) : m_aggregate(aggregate) {}

    void add(double value)
    {
        m_lowest = std::min(m_lowest, value);
        m_highest = std::max(m_highest, value);
        m_sum += value;
        ++m_count;
        if (m_aggregate == Aggregate::Deviation)
            m_deviation.add(value);
    }

    std::optional<double> result() const
    {
        if (m_aggregate == Aggregate::Count)
            return double(m_count);
        if (m_count == 0 || (m_aggregate == Aggregate::Deviation && m_count == 1))
            return {};
        switch (m_aggregate) {
        case Aggregate::Average:
            return m_sum / double(m_count);
        case Aggregate::Maximum:
            return m_highest;
        case Aggregate::Minimum:
            return m_lowest;
        default:
            return m_deviation.result();
        }
    }

private:
    Aggregate m_aggregate;
    size_t m_count = 0;
    double m_sum = 0;
    double m_lowest = std::numeric_limits<double>::infinity();
    double m_highest = -std::numeric_limits<double>::infinity();
    runtime::Deviation m_deviation;
};

} // namespace

QString figureText(double number)
{
    return doubleText(runtime::Round(number, 2));
}

ExamFigures::ExamFigures(ReportContext& context, QString exam, QString stream,
                         const runtime::Trap& trap)
    : m_context(context), m_exam(std::move(exam)), m_stream(std::move(stream)), m_trap(trap)
{
}

const ExamRows* ExamFigures::rows()
{
    // What the rows cannot be read for, the single statements will say.
    if (!m_rows)
        runtime::Trap::silent()([&] { m_rows = &m_context.rows(m_exam, m_stream); });
    return m_rows;
}

std::optional<double> ExamFigures::ask(const QString& sql)
{
    std::optional<double> answer;
    m_trap([&] {
        database::Recordset rows;
        rows.Open(sql + m_context.library.settings.CategoryFilter, m_context.library.Conn);
        const runtime::Value value = rows.Fields(0).Value();
        if (!value.isNull())
            answer = value.toDouble();
    });
    return answer;
}

QString ExamFigures::placeSql() const
{
    return u" from 成绩表 WHERE  考试名称='"_s + m_exam + u"' and 科类='"_s + m_stream + u"'"_s;
}

QString ExamFigures::rowsSql(const QString& condition, double classNumber) const
{
    return u"select * from 成绩表 WHERE  考试名称='"_s + m_exam + u"' and "_s + condition
           + u" and 科类='"_s + m_stream + u"' and 班级="_s + doubleText(classNumber)
           + m_context.library.settings.CategoryFilter;
}

ExamFigures::ClassFigure ExamFigures::rowCount(const Condition& condition)
{
    ClassFigure figure(*this, condition);
    figure.m_onRows = figure.findTests();
    return figure;
}

ExamFigures::ClassFigure ExamFigures::figure(Aggregate aggregate, const QString& column,
                                             const Condition& condition)
{
    ClassFigure figure(*this, condition);
    figure.m_aggregate = aggregate;
    figure.m_column = column;
    if (figure.findTests())
        figure.m_values = m_rows->column(column);
    figure.m_onRows = figure.m_values != nullptr;
    return figure;
}

ExamFigures::ClassFigure::ClassFigure(ExamFigures& figures, Condition condition)
    : m_figures(figures), m_condition(std::move(condition))
{
}

bool ExamFigures::ClassFigure::findTests()
{
    if (!m_condition.isSimple() || !m_figures.rows())
        return false;
    for (const Comparison& comparison : m_condition.comparisons()) {
        const double* values = m_figures.m_rows->column(comparison.column);
        if (!values)
            return false;
        narrow(values, comparison);
    }
    return true;
}

/// The two comparisons of an interval make one test.
void ExamFigures::ClassFigure::narrow(const double* values, const Comparison& comparison)
{
    if (m_tests.empty() || m_tests.back().values != values)
        m_tests.push_back({values, comparison.lowest(), comparison.highest()});
    Test& test = m_tests.back();
    test.low = std::max(test.low, comparison.lowest());
    test.high = std::min(test.high, comparison.highest());
}

bool ExamFigures::ClassFigure::passes(size_t row) const
{
    return std::all_of(m_tests.begin(), m_tests.end(),
                       [row](const Test& test) { return test.holds(row); });
}

std::optional<double> ExamFigures::ClassFigure::operator()(double classNumber) const
{
    if (!m_onRows)
        return ask(classNumber);
    const ExamRows::Place place = m_figures.m_rows->ofClass(classNumber);
    return m_aggregate ? aggregateRows(place) : countRows(place);
}

double ExamFigures::ClassFigure::countRows(ExamRows::Place place) const
{
    const size_t end = place.first + place.count;
    qint64 count = 0;
    if (m_tests.size() == 1) {
        const Test test = m_tests.front();
        for (size_t row = place.first; row < end; ++row)
            count += qint64(test.values[row] >= test.low) & qint64(test.values[row] <= test.high);
    } else {
        for (size_t row = place.first; row < end; ++row)
            count += passes(row);
    }
    return double(count);
}

std::optional<double> ExamFigures::ClassFigure::aggregateRows(ExamRows::Place place) const
{
    // What passes a test on the column itself is no NULL.
    if (m_aggregate == Aggregate::Count && m_tests.size() == 1
        && m_tests.front().values == m_values)
        return countRows(place);
    Collector collector(*m_aggregate);
    const auto collect = [&](const auto& passed) {
        for (size_t row = place.first; row < place.first + place.count; ++row) {
            if (!std::isnan(m_values[row]) && passed(row))
                collector.add(m_values[row]);
        }
    };
    // Most figures have no test, or one and another; a loop over them would take most of the time.
    if (m_tests.empty())
        collect([](size_t) { return true; });
    else if (m_tests.size() <= 2)
        collect([first = m_tests.front(), last = m_tests.back()](size_t row) {
            return first.holds(row) && last.holds(row);
        });
    else
        collect([this](size_t row) { return passes(row); });
    return collector.result();
}

std::optional<double> ExamFigures::ClassFigure::ask(double classNumber) const
{
    if (!m_aggregate) {
        std::optional<double> answer;
        m_figures.m_trap([&] {
            database::Recordset rows;
            rows.Open(m_figures.rowsSql(m_condition.text(), classNumber),
                      m_figures.m_context.library.Conn);
            answer = double(rows.RecordCount());
        });
        return answer;
    }
    QString sql = u"select "_s + functionName(*m_aggregate) + u"("_s + m_column + u")"_s
                  + m_figures.placeSql() + u" and 班级="_s + doubleText(classNumber);
    if (!m_condition.isNone())
        sql += u" and "_s + m_condition.text();
    return m_figures.ask(sql);
}

std::optional<double> ExamFigures::highest(const QString& column)
{
    const double* values = rows() ? m_rows->column(column) : nullptr;
    if (!values)
        return ask(u"select max("_s + column + u")"_s + placeSql());
    Collector collector(Aggregate::Maximum);
    for (size_t row = 0; row < m_rows->rowCount(); ++row) {
        if (!std::isnan(values[row]))
            collector.add(values[row]);
    }
    return collector.result();
}

std::vector<double> ExamFigures::taken(const QString& column, double classNumber)
{
    std::vector<double> found;
    if (const double* values = rows() ? m_rows->column(column) : nullptr) {
        const ExamRows::Place place = m_rows->ofClass(classNumber);
        std::copy_if(values + place.first, values + place.first + place.count,
                     std::back_inserter(found), [](double value) { return value >= 0; });
        return found;
    }
    m_trap([&] {
        database::Recordset records;
        records.Open(rowsSql(column + u">=0"_s, classNumber), m_context.library.Conn);
        for (; !records.Eof(); records.MoveNext())
            found.push_back(runtime::Val(records.Fields(column).Value()));
    });
    return found;
}

} // namespace statistics
