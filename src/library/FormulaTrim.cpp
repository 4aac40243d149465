#include "library/FormulaTrim.h"

#include <algorithm>

#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;

void openFormula(database::Recordset& rows, const QString& total, database::Connection& conn)
{
    rows.Open(u"select * from 总分公式 where 总分=?"_s, {total}, conn);
}

namespace {

bool isTrimmable(const FormulaTrim& trim)
{
    return !trim.trimmed.isEmpty();
}

bool isWanted(const std::vector<FormulaTrim>& trims)
{
    QStringList lines;
    for (const FormulaTrim& trim : trims)
        lines.append(u"%1=%2 → %3"_s.arg(trim.total, trim.formula,
                                         isTrimmable(trim) ? trim.trimmed
                                                           : u"（没有现有科目，保持不变）"_s));
    return runtime::choose(
               {.text = u"这些总分公式里有成绩库没有的科目：\n\n%1\n\n"
                        "改为现有科目后，总分只加箭头后面的科目。"_s.arg(lines.join(u'\n')),
                .buttons = {u"改为现有科目"_s, u"保持不变"_s},
                .safe = 1,
                .title = u"总分公式"_s})
           == 0;
}

void writeTrimmed(ScoreLibrary& scoreLibrary)
{
    database::WriteBatch batch(scoreLibrary.Conn);
    for (const FormulaTrim& trim : formulasToTrim(scoreLibrary)) {
        if (!isTrimmable(trim))
            continue;
        database::Recordset rows;
        openFormula(rows, trim.total, scoreLibrary.Conn);
        rows.Fields(u"公式"_s).setValue(trim.trimmed);
        rows.Update();
    }
    batch.commit();
}

} // namespace

std::vector<FormulaTrim> formulasToTrim(ScoreLibrary& scoreLibrary)
{
    const Catalogue& catalogue = scoreLibrary.catalogue;
    std::vector<FormulaTrim> trims;
    for (const QString& total : catalogue.TotalColumns) {
        database::Recordset rows;
        openFormula(rows, total, scoreLibrary.Conn);
        const QString formula = rows.Eof() ? QString() : rows.Fields(u"公式"_s).Value().text();
        const QStringList terms = formulaTerms(formula);
        QStringList left = terms;
        left.removeIf([&](const QString& term) { return !catalogue.AllColumns.contains(term); });
        if (!formula.isEmpty() && left.size() < terms.size())
            trims.push_back({total, formula, left.join(u'+')});
    }
    return trims;
}

void offerFormulaTrim(ScoreLibrary& scoreLibrary)
{
    const runtime::Trap trap{" - Private Sub Command1_Click/FormNew"};
    trap([&] {
        const std::vector<FormulaTrim> trims = formulasToTrim(scoreLibrary);
        if (std::ranges::any_of(trims, isTrimmable) && isWanted(trims))
            writeTrimmed(scoreLibrary);
    });
}

} // namespace library
