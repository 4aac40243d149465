#include "scoring/TotalFormulas.h"

#include "library/ColumnNames.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"

namespace scoring {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

/// The rows of all these exams. Without an exam the condition is cut off, which the engine refuses.
QString rowsOf(const QStringList& exams)
{
    QString condition = u" where 考试名称="_s;
    if (!exams.isEmpty())
        condition += u'\'' + exams.join(u"' or 考试名称='"_s);
    return u"select * from 考试名称表"_s + condition + u'\'';
}

} // namespace

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
        rows.Open(u"select * from 考试名称表 where 考试名称='"_s + exam + u'\'', m_library.Conn);
        formula = rows.Fields(total).Value().text();
    });
    return formula;
}

bool TotalFormulas::checkTerms(const QString& formula) const
{
    for (const QString& term : library::formulaTerms(formula)) {
        if (m_library.catalogue.AllColumns.contains(term))
            continue;
        runtime::warn(u"总分公式中添加的科目： "_s + term + u" 无效！只能添加现有科目。"_s);
        return false;
    }
    return true;
}

void TotalFormulas::save(const QStringList& chosenExams, const QString& total,
                         const QString& formula)
{
    const Trap trap{" - Private Sub Command1_Click/FormZFGS"};
    database::Recordset rows;
    if (!checkTerms(formula) || !trap([&] { rows.Open(rowsOf(chosenExams), m_library.Conn); }))
        return;
    const auto more = [&] {
        bool row = false;
        trap([&] { row = !rows.Eof(); });
        return row;
    };
    while (more()) {
        trap([&] { rows.Fields(total).setValue(formula); });
        trap([&] { rows.Update(); });
        if (!trap([&] { rows.MoveNext(); }))
            return;
    }
}

} // namespace scoring
