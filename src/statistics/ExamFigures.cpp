#include "statistics/ExamFigures.h"

#include "platform/database/Recordset.h"
#include "platform/database/SqlPieces.h"
#include "platform/runtime/Numbers.h"

namespace statistics {

using namespace Qt::StringLiterals;
using database::SqlPiece;

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

FigureKind kindOf(std::optional<Aggregate> aggregate)
{
    if (!aggregate)
        return FigureKind::Rows;
    switch (*aggregate) {
    case Aggregate::Count:
        return FigureKind::Values;
    case Aggregate::Average:
        return FigureKind::Average;
    case Aggregate::Maximum:
        return FigureKind::Maximum;
    case Aggregate::Minimum:
        return FigureKind::Minimum;
    case Aggregate::Deviation:
        return FigureKind::Deviation;
    }
    return FigureKind::None;
}

} // namespace

QString figureText(double number)
{
    return runtime::doubleText(runtime::Round(number, 2));
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

const double* ExamFigures::valuesOf(const QString& column)
{
    return rows() ? m_rows->column(column) : nullptr;
}

void ExamFigures::openRows(database::Recordset& rows, const QString& condition, double classNumber)
{
    const SqlPiece filter = SqlPiece::condition(m_context.library.settings.CategoryFilter);
    rows.Open(
        database::sqlWith(u"select * from 成绩表 WHERE 考试名称=? and %1 and 科类=? and 班级=?%2"_s,
                          {SqlPiece::condition(condition), filter}),
        {m_exam, m_stream, classNumber}, m_context.library.Conn);
}

std::optional<double> ExamFigures::firstField(const QString& sql,
                                              const std::vector<runtime::Value>& values)
{
    database::Recordset rows;
    rows.Open(sql, values, m_context.library.Conn);
    const runtime::Value value = rows.Fields(0).Value();
    return value.isNull() ? std::nullopt : std::optional(value.toDouble());
}

ExamFigures::ClassFigure ExamFigures::rowCount(const Condition& condition, const QString& column)
{
    ClassFigure figure(*this, condition);
    figure.m_column = column;
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

Meaning ExamFigures::ClassFigure::meaning() const
{
    return {.kind = kindOf(m_aggregate),
            .exam = m_figures.m_exam,
            .column = m_column,
            .condition = m_condition.text(),
            .on = m_onRows ? ReckonedOn::Rows : ReckonedOn::Engine};
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
    const Test single{values, comparison.lowest(), comparison.highest()};
    if (m_tests.empty() || m_tests.back().values != values)
        return m_tests.push_back(single);
    Test& test = m_tests.back();
    test.low = std::max(test.low, single.low);
    test.high = std::min(test.high, single.high);
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
    Tally tally(*m_aggregate);
    const auto collect = [&](const auto& passed) {
        for (size_t row = place.first; row < place.first + place.count; ++row) {
            if (!std::isnan(m_values[row]) && passed(row))
                tally.add(m_values[row]);
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
    return tally.result();
}

std::optional<double> ExamFigures::ClassFigure::ask(double classNumber) const
{
    std::optional<double> answer;
    m_figures.m_trap(
        [&] { answer = m_aggregate ? askAggregate(classNumber) : askCount(classNumber); });
    return answer;
}

double ExamFigures::ClassFigure::askCount(double classNumber) const
{
    database::Recordset rows;
    m_figures.openRows(rows, m_condition.sqlText(), classNumber);
    return double(rows.RecordCount());
}

std::optional<double> ExamFigures::ClassFigure::askAggregate(double classNumber) const
{
    const QString condition = m_condition.isNone() ? QString() : u" and "_s + m_condition.sqlText();
    return m_figures.firstField(
        database::sqlWith(
            u"select %1(%2) from 成绩表 WHERE 考试名称=? and 科类=? and 班级=?%3%4"_s,
            {SqlPiece::name(functionName(*m_aggregate)), SqlPiece::name(m_column),
             SqlPiece::condition(condition),
             SqlPiece::condition(m_figures.m_context.library.settings.CategoryFilter)}),
        {m_figures.m_exam, m_figures.m_stream, classNumber});
}

std::optional<double> ExamFigures::highest(const QString& column)
{
    const double* values = valuesOf(column);
    if (!values)
        return askHighest(column);
    Tally tally(Aggregate::Maximum);
    for (size_t row = 0; row < m_rows->rowCount(); ++row) {
        if (!std::isnan(values[row]))
            tally.add(values[row]);
    }
    return tally.result();
}

std::optional<double> ExamFigures::askHighest(const QString& column)
{
    std::optional<double> answer;
    m_trap([&] {
        const SqlPiece filter = SqlPiece::condition(m_context.library.settings.CategoryFilter);
        answer = firstField(
            database::sqlWith(u"select max(%1) from 成绩表 WHERE 考试名称=? and 科类=?%2"_s,
                              {SqlPiece::name(column), filter}),
            {m_exam, m_stream});
    });
    return answer;
}

Meaning ExamFigures::takenMeaning(const QString& column, const QString& condition)
{
    return {.kind = FigureKind::Values,
            .exam = m_exam,
            .column = column,
            .condition = condition,
            .on = valuesOf(column) ? ReckonedOn::Rows : ReckonedOn::Engine};
}

std::vector<double> ExamFigures::taken(const QString& column, double classNumber)
{
    std::vector<double> found;
    if (const double* values = valuesOf(column)) {
        const ExamRows::Place place = m_rows->ofClass(classNumber);
        std::copy_if(values + place.first, values + place.first + place.count,
                     std::back_inserter(found), isSitting);
        return found;
    }
    m_trap([&] {
        database::Recordset records;
        openRows(records, sittingCondition(column).sqlText(), classNumber);
        for (; !records.Eof(); records.MoveNext())
            found.push_back(runtime::Val(records.Fields(column).Value()));
    });
    return found;
}

} // namespace statistics
