#include "scoring/Totals.h"

#include "library/ColumnNames.h"
#include "platform/database/Error.h"
#include "platform/runtime/Trap.h"

namespace scoring {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap totalsTrap{" - Sub JiSuanZF/Mdl_MDB"};

/// A column under the name by which a formula or a total reaches it; the column is missing if
/// 成绩表 has none of that name, or one of texts.
struct NamedColumn
{
    QString name;
    TableColumn* column = nullptr;
    bool text = false;

    /// False, after the engine's message, if there is nothing to read or write.
    bool usable() const
    {
        if (column)
            return true;
        totalsTrap.fail(text ? u"列“%1”是文字，不能当作分数。"_s.arg(name)
                             : database::noSuchColumn(name));
        return false;
    }
};

/// A term of a formula: the subject's score, Z and T columns, and its weight, full mark / 100.
struct Term
{
    NamedColumn score;
    NamedColumn z;
    NamedColumn t;
    double weight;
};

struct Total
{
    NamedColumn score;
    NamedColumn z;
    NamedColumn t;
    std::vector<Term> terms;
};

/// Looks the columns of one exam and stream up, once, ahead of the rows.
class Formulas
{
public:
    Formulas(library::ScoreLibrary& scoreLibrary, ExamTable& table, const QString& exam,
             const QString& stream)
        : m_library(scoreLibrary), m_table(table), m_exam(exam), m_stream(stream)
    {
    }

    /// `formulas` are parallel to the totals of the library.
    std::vector<Total> totals(const QStringList& formulas)
    {
        const library::Catalogue& catalogue = m_library.catalogue;
        std::vector<Total> found;
        for (qsizetype i = 0; i < catalogue.TotalColumns.size(); ++i) {
            const QString& name = catalogue.TotalColumns[i];
            Total& total = found.emplace_back();
            total.score = named(name);
            total.z = result(library::zScoreColumn(name));
            total.t = result(library::tScoreColumn(name));
            for (const QString& term : library::formulaTerms(formulas.value(i)))
                total.terms.push_back(makeTerm(term));
        }
        return found;
    }

private:
    NamedColumn named(const QString& name) { return {name, m_table.column(name), isThere(name)}; }
    NamedColumn result(const QString& name)
    {
        return {name, m_table.resultColumn(name), isThere(name)};
    }
    bool isThere(const QString& name) const
    {
        return m_library.Conn.columns(u"成绩表"_s).find(name) >= 0;
    }

    Term makeTerm(const QString& name)
    {
        const float full = m_library.catalogue.getKMMF(m_exam, m_stream, name);
        Term term{named(name), named(library::zScoreColumn(name)),
                  named(library::tScoreColumn(name)), double(full) / 100};
        // What is no column at all is told by its own name, and so as one failure.
        for (NamedColumn* part : {&term.z, &term.t}) {
            if (!term.score.column && !part->column && !part->text)
                part->name = name;
        }
        return term;
    }

    library::ScoreLibrary& m_library;
    ExamTable& m_table;
    const QString& m_exam;
    const QString& m_stream;
};

/// Sums of one row. They run on over all totals of the row: a later total carries the z and T of
/// the earlier ones on top of its own.
struct RowSums
{
    double z = 0;
    double t = 0;
};

void addWeighted(double& sum, const NamedColumn& part, size_t row, double weight)
{
    if (part.usable() && !part.column->isNull(row))
        sum += part.column->value(row) * weight;
}

/// The sum passes through the total's Single at every term. A formula that names its own total
/// reads the sum as it stands.
void computeTotal(const Total& total, size_t row, RowSums& sums)
{
    float sum = 0;
    int count = 0;
    // The field is set to 0 first, and written at every term: a total without a column fails each
    // time.
    total.score.usable();
    for (const Term& term : total.terms) {
        const TableColumn* part = term.score.usable() ? term.score.column : nullptr;
        const bool itself = part && part == total.score.column;
        if (itself || (part && part->taken(row))) {
            ++count;
            if (total.score.usable())
                sum = float(double(sum) + (itself ? double(sum) : part->value(row)));
        }
        addWeighted(sums.z, term.z, row, term.weight);
        addWeighted(sums.t, term.t, row, term.weight);
    }
    if (total.z.usable())
        total.z.column->set(row, sums.z);
    if (total.t.usable())
        total.t.column->set(row, sums.t);
    if (count == 0 && total.score.usable())
        sum = -1;
    if (total.score.column)
        total.score.column->set(row, double(sum));
}

void computeStream(library::ScoreLibrary& scoreLibrary, ExamTables& tables, const QString& stream)
{
    const QStringList formulas = scoreLibrary.catalogue.GetZFKMGS(tables.exam(), stream);
    ExamTable& table = tables.of(stream);
    const std::vector<Total> totals =
        Formulas(scoreLibrary, table, tables.exam(), stream).totals(formulas);
    for (size_t row = 0; row < table.rowCount(); ++row) {
        RowSums sums;
        for (const Total& total : totals)
            computeTotal(total, row, sums);
    }
}

} // namespace

bool computeTotals(library::ScoreLibrary& scoreLibrary, ExamTables& tables)
{
    bool complete = true;
    for (const QString& stream : std::as_const(scoreLibrary.catalogue.Streams))
        complete = totalsTrap([&] { computeStream(scoreLibrary, tables, stream); }) && complete;
    return complete;
}

} // namespace scoring
