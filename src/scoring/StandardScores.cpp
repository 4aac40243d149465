#include "scoring/StandardScores.h"

#include "library/ColumnNames.h"
#include "platform/database/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace scoring {

using namespace Qt::StringLiterals;
using runtime::Round;
using runtime::Trap;

namespace {

const Trap trap{" - Sub Zfen/Mdl_MDB"};

/// Mean and sample standard deviation of the values of 0 and more.
struct Distribution
{
    double mean = 0;
    double deviation = 0;
    /// False for fewer than two values: there is no deviation then.
    bool hasDeviation = false;
};

Distribution distributionOf(const TableColumn& scores, size_t rows)
{
    double sum = 0;
    double lowest = 0;
    double highest = 0;
    size_t count = 0;
    for (size_t row = 0; row < rows; ++row) {
        if (!scores.taken(row))
            continue;
        const double value = scores.value(row);
        lowest = count == 0 ? value : std::min(lowest, value);
        highest = count == 0 ? value : std::max(highest, value);
        sum += value;
        ++count;
    }
    Distribution found;
    found.mean = count == 0 ? 0 : sum / double(count);
    found.hasDeviation = count > 1;
    // Equal values have no deviation at all; rounding must not invent one.
    if (count < 2 || lowest == highest)
        return found;
    double squares = 0;
    for (size_t row = 0; row < rows; ++row) {
        if (scores.taken(row))
            squares += (scores.value(row) - found.mean) * (scores.value(row) - found.mean);
    }
    found.deviation = std::sqrt(squares / double(count - 1));
    return found;
}

/// The z that the row before left behind: nothing at all at the start of a run, later a number or
/// NULL.
struct LastZ
{
    enum class Kind { Unset, Null, Number } kind = Kind::Unset;
    double number = 0;

    void set(double z) { *this = {Kind::Number, z}; }
    void setNull() { *this = {Kind::Null, 0}; }
};

/// Takes the z of one score. Where all scores are equal the division fails, and the z before stays.
void takeZ(LastZ& z, const TableColumn& scores, size_t row, const Distribution& distribution)
{
    if (scores.isNull(row) || !distribution.hasDeviation)
        z.setNull();
    else if (distribution.deviation == 0)
        trap.fail(u"除数为零。"_s);
    else
        z.set(Round((std::max(scores.value(row), 0.0) - distribution.mean) / distribution.deviation,
                    2));
}

void storeZ(TableColumn* column, const QString& name, size_t row, const LastZ& z)
{
    if (!column)
        trap.fail(database::noSuchColumn(name));
    else if (z.kind == LastZ::Kind::Number)
        column->set(row, z.number);
    else
        column->setNull(row);
}

void storeT(TableColumn* column, const QString& name, size_t row, const LastZ& z,
            const library::Settings& settings)
{
    if (!column)
        trap.fail(database::noSuchColumn(name));
    else if (z.kind == LastZ::Kind::Null)
        column->setNull(row);
    else
        column->set(row, Round(settings.TFactor * z.number + settings.TOffset));
}

void computeSubject(Scoring& scoring, ExamTable& table, const QString& subject, LastZ& z)
{
    const TableColumn& scores = *table.column(subject);
    const Distribution distribution = distributionOf(scores, table.rowCount());
    if (!(distribution.mean > 0))
        return;
    const QString zName = library::zScoreColumn(subject);
    const QString tName = library::tScoreColumn(subject);
    TableColumn* zColumn = table.resultColumn(zName);
    TableColumn* tColumn = table.resultColumn(tName);
    const library::Settings& settings = scoring.library().settings;
    for (size_t row = 0; row < table.rowCount(); ++row) {
        takeZ(z, scores, row, distribution);
        storeZ(zColumn, zName, row, z);
        storeT(tColumn, tName, row, z, settings);
    }
}

void computeStream(Scoring& scoring, ExamTables& tables, const QString& stream, LastZ& z)
{
    const QStringList subjects = scoring.library().catalogue.GetKSKM(tables.exam(), stream).names;
    ExamTable& table = tables.of(stream);
    for (const QString& subject : subjects) {
        if (table.column(subject)) {
            computeSubject(scoring, table, subject, z);
        } else {
            // The engine says what is wrong with the column; a mean of 0 leaves the rest alone.
            scoring.GetPJF(tables.exam(), subject, stream);
            scoring.GetBZC(tables.exam(), subject, stream);
        }
    }
}

} // namespace

bool computeStandardScores(Scoring& scoring, ExamTables& tables)
{
    scoring.GetZtoT();
    LastZ z;
    bool complete = true;
    for (const QString& stream : std::as_const(scoring.library().catalogue.Streams))
        complete = trap([&] { computeStream(scoring, tables, stream, z); }) && complete;
    return complete;
}

} // namespace scoring
