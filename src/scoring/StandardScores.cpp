#include "scoring/StandardScores.h"

#include "library/ColumnNames.h"
#include "platform/database/Error.h"
#include "platform/database/Recordset.h"
#include "platform/database/SqlPieces.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace scoring {

using namespace Qt::StringLiterals;
using runtime::Round;
using runtime::Trap;
using runtime::Val;
using runtime::Value;

namespace {

/// An aggregate over the students that sat a column; `values` are exam, stream and what else the
/// statement asks for. Throws Error.
Value aggregate(library::ScoreLibrary& scoreLibrary, const QString& sql, const QString& column,
                const std::vector<Value>& values)
{
    database::Recordset rows;
    rows.Open(database::sqlWith(sql, {database::SqlPiece::name(column)}), values,
              scoreLibrary.Conn);
    return rows.Fields(0).Value();
}

} // namespace

std::optional<TConversion> TConversion::parse(const QString& setting)
{
    const QStringList pieces = QString(setting).remove(u' ').toLower().split(u"z+"_s);
    if (pieces.size() < 2)
        return std::nullopt;
    return TConversion{Val(pieces[0]), Val(pieces[1])};
}

void GetZtoT(library::ScoreLibrary& scoreLibrary)
{
    const Trap reading{" - Sub GetZtoT/Mdl_MDB"};
    reading([&] {
        database::Recordset rows;
        rows.Open(u"SELECT * from 设置表 WHERE 名称='T分'"_s, scoreLibrary.Conn);
        const QString setting = rows.Fields(u"设置"_s).Value().text();
        const std::optional<TConversion> conversion = TConversion::parse(setting);
        if (!conversion)
            return runtime::warn(u"T分转换公式设置不正确！"_s);
        scoreLibrary.settings.TFactor = conversion->factor;
        scoreLibrary.settings.TOffset = conversion->offset;
    });
}

double GetPJF(library::ScoreLibrary& scoreLibrary, const QString& exam, const QString& column,
              const QString& stream)
{
    const Trap reading{" - Function GetPJF/Mdl_MDB"};
    double mean = 0;
    reading([&] {
        mean = Val(aggregate(
            scoreLibrary, u"SELECT Avg(%1) from 成绩表 WHERE %1 >= 0 and 考试名称=? and 科类=?"_s,
            column, {exam, stream}));
    });
    return mean;
}

double GetBJPJF(library::ScoreLibrary& scoreLibrary, const QString& exam, const QString& column,
                const QString& stream, double classNumber)
{
    const Trap reading{" - Function GetBJPJF/Mdl_MDB"};
    double mean = 0;
    reading([&] {
        mean = Val(aggregate(
            scoreLibrary,
            u"SELECT Avg(%1) from 成绩表 WHERE %1 >= 0 and 考试名称=? and 科类=? and 班级=?"_s,
            column, {exam, stream, classNumber}));
    });
    return mean;
}

Value GetBZC(library::ScoreLibrary& scoreLibrary, const QString& exam, const QString& column,
             const QString& stream)
{
    const Trap reading{" - Function GetBZC/Mdl_MDB"};
    Value deviation;
    reading([&] {
        deviation = aggregate(
            scoreLibrary, u"SELECT stdev(%1) from 成绩表 WHERE %1 >= 0 and 考试名称=? and 科类=?"_s,
            column, {exam, stream});
    });
    return deviation;
}

namespace {

const Trap standardScoresTrap{" - Sub Zfen/Mdl_MDB"};

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
        standardScoresTrap.fail(u"除数为零。"_s);
    else
        z.set(Round((std::max(scores.value(row), 0.0) - distribution.mean) / distribution.deviation,
                    2));
}

void storeZ(TableColumn* column, const QString& name, size_t row, const LastZ& z)
{
    if (!column)
        standardScoresTrap.fail(database::noSuchColumn(name));
    else if (z.kind == LastZ::Kind::Number)
        column->set(row, z.number);
    else
        column->setNull(row);
}

void storeT(TableColumn* column, const QString& name, size_t row, const LastZ& z,
            const library::Settings& settings)
{
    if (!column)
        standardScoresTrap.fail(database::noSuchColumn(name));
    else if (z.kind == LastZ::Kind::Null)
        column->setNull(row);
    else
        column->set(row, Round(settings.TFactor * z.number + settings.TOffset));
}

void computeSubject(library::ScoreLibrary& scoreLibrary, ExamTable& table, const QString& subject,
                    LastZ& z)
{
    const TableColumn& scores = *table.column(subject);
    const Distribution distribution = distributionOf(scores, table.rowCount());
    if (!(distribution.mean > 0))
        return;
    const QString zName = library::zScoreColumn(subject);
    const QString tName = library::tScoreColumn(subject);
    TableColumn* zColumn = table.resultColumn(zName);
    TableColumn* tColumn = table.resultColumn(tName);
    const library::Settings& settings = scoreLibrary.settings;
    for (size_t row = 0; row < table.rowCount(); ++row) {
        takeZ(z, scores, row, distribution);
        storeZ(zColumn, zName, row, z);
        storeT(tColumn, tName, row, z, settings);
    }
}

void computeStream(library::ScoreLibrary& scoreLibrary, ExamTables& tables, const QString& stream,
                   LastZ& z)
{
    const QStringList subjects = scoreLibrary.catalogue.GetKSKM(tables.exam(), stream).names;
    ExamTable& table = tables.of(stream);
    for (const QString& subject : subjects) {
        if (table.column(subject)) {
            computeSubject(scoreLibrary, table, subject, z);
        } else {
            // The engine says what is wrong with the column; a mean of 0 leaves the rest alone.
            GetPJF(scoreLibrary, tables.exam(), subject, stream);
            GetBZC(scoreLibrary, tables.exam(), subject, stream);
        }
    }
}

} // namespace

bool computeStandardScores(library::ScoreLibrary& scoreLibrary, ExamTables& tables)
{
    GetZtoT(scoreLibrary);
    LastZ z;
    bool complete = true;
    for (const QString& stream : std::as_const(scoreLibrary.catalogue.Streams))
        complete =
            standardScoresTrap([&] { computeStream(scoreLibrary, tables, stream, z); }) && complete;
    return complete;
}

} // namespace scoring
