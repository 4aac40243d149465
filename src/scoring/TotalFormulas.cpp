#include "scoring/TotalFormulas.h"

#include "library/ColumnNames.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"

namespace scoring {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

/// The rows of all these exams. Without an exam the condition stays open, which the engine refuses.
void openRowsOf(const QStringList& exams, database::Recordset& rows, database::Connection& conn)
{
    if (exams.isEmpty())
        return rows.Open(u"select * from 考试名称表 where 考试名称='"_s, conn);
    std::vector<runtime::Value> names;
    for (const QString& exam : exams)
        names.emplace_back(exam);
    rows.Open(database::sqlWith(u"select * from 考试名称表 where 考试名称 in (%1)"_s,
                                {database::SqlPiece::places(1, int(exams.size()))}),
              names, conn);
}

} // namespace

QString formulaFault(const QString& formula, const QStringList& columns)
{
    for (const QString& term : library::formulaTerms(formula)) {
        if (!columns.contains(term))
            return u"总分公式中添加的科目： "_s + term + u" 无效！只能添加现有科目。"_s;
    }
    return {};
}

void TotalFormulas::load()
{
    const Trap trap{" - Private Sub Form_Load/FormZFGS"};
    exams.clear();
    totals.clear();
    subjects.clear();
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select * from 考试名称表 order by 考试编号"_s, m_library.Conn);
        for (; !rows.Eof(); rows.MoveNext())
            exams.append(rows.Fields(u"考试名称"_s).Value().text());
    });
    for (const QString& column : std::as_const(m_library.catalogue.AllColumns))
        (library::isTotal(column) ? totals : subjects).append(column);
}

std::optional<QString> TotalFormulas::ShowGS(const QString& exam, const QString& total) const
{
    const Trap trap{" - Sub ShowGS/FormZFGS"};
    std::optional<QString> formula;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select * from 考试名称表 where 考试名称=?"_s, {exam}, m_library.Conn);
        formula = rows.Fields(total).Value().text();
    });
    return formula;
}

bool TotalFormulas::checkTerms(const QString& formula) const
{
    const QString fault = formulaFault(formula, m_library.catalogue.AllColumns);
    if (!fault.isEmpty())
        runtime::warn(fault);
    return fault.isEmpty();
}

void TotalFormulas::save(const QStringList& chosenExams, const QString& total,
                         const QString& formula)
{
    const Trap trap{" - Private Sub Command1_Click/FormZFGS"};
    if (!checkTerms(formula))
        return;
    trap([&] {
        database::WriteBatch batch(m_library.Conn);
        database::Recordset rows;
        openRowsOf(chosenExams, rows, m_library.Conn);
        for (; !rows.Eof(); rows.MoveNext()) {
            trap([&] { rows.Fields(total).setValue(formula); });
            trap([&] { rows.Update(); });
        }
        batch.commit();
    });
}

} // namespace scoring
