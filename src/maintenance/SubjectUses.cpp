#include "maintenance/SubjectUses.h"

#include <algorithm>

#include "library/ColumnNames.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/Recordset.h"

namespace maintenance {

using namespace Qt::StringLiterals;

namespace {

/// What is removed, to be looked for in texts of the library.
class Removed
{
public:
    explicit Removed(const QStringList& columns) : m_columns(columns) {}

    bool isColumn(const QString& name) const
    {
        return m_columns.contains(name, Qt::CaseInsensitive);
    }
    bool isInFormula(const QString& formula) const
    {
        const QStringList terms = library::formulaTerms(formula);
        return std::any_of(terms.begin(), terms.end(),
                           [this](const QString& term) { return isColumn(term); });
    }
    bool isInSelection(const QString& items) const
    {
        const QStringList names = items.split(u',');
        return std::any_of(names.begin(), names.end(),
                           [this](const QString& name) { return isOrBelongsToColumn(name); });
    }

private:
    bool isOrBelongsToColumn(const QString& name) const
    {
        return std::any_of(m_columns.begin(), m_columns.end(), [&](const QString& column) {
            const QStringList all = library::columnsOf(column);
            return all.contains(name, Qt::CaseInsensitive);
        });
    }

    const QStringList& m_columns;
};

/// Rows of the statement for which `counts` is true.
int countRows(database::Connection& connection, const QString& sql,
              const std::function<int(database::Recordset&)>& counts)
{
    database::Recordset rows;
    rows.Open(sql, connection);
    int found = 0;
    for (; !rows.Eof(); rows.MoveNext())
        found += counts(rows);
    return found;
}

} // namespace

SubjectUses usesOf(library::ScoreLibrary& scoreLibrary, const QStringList& columns)
{
    database::Connection& connection = scoreLibrary.Conn;
    const database::ReadBatch reading(connection);
    const Removed removed(columns);
    const auto text = [](database::Recordset& rows, const QString& field) {
        return rows.Fields(field).Value().text();
    };
    SubjectUses uses;
    uses.examFormulas =
        countRows(connection, u"select * from 考试名称表"_s, [&](database::Recordset& rows) {
            const QStringList& totals = scoreLibrary.catalogue.TotalColumns;
            return int(std::count_if(totals.begin(), totals.end(), [&](const QString& total) {
                return !removed.isColumn(total) && removed.isInFormula(text(rows, total));
            }));
        });
    uses.defaultFormulas =
        countRows(connection, u"select * from 总分公式"_s, [&](database::Recordset& rows) {
            return int(!removed.isColumn(text(rows, u"总分"_s))
                       && removed.isInFormula(text(rows, u"公式"_s)));
        });
    uses.conditions =
        countRows(connection, u"select * from 详细设置表"_s, [&](database::Recordset& rows) {
            return int(removed.isColumn(text(rows, u"科目"_s)));
        });
    uses.displays =
        countRows(connection, u"select * from 自定义显示表"_s, [&](database::Recordset& rows) {
            return int(removed.isInSelection(text(rows, u"显示项目"_s)));
        });
    return uses;
}

QString SubjectUses::lines() const
{
    QString text;
    for (const auto& [place, count] : {std::pair{u"各次考试的总分公式：%1 个\n"_s, examFormulas},
                                       {u"总分公式的默认值：%1 个\n"_s, defaultFormulas},
                                       {u"各科条件：%1 条\n"_s, conditions},
                                       {u"自定义显示：%1 项\n"_s, displays}}) {
        if (count > 0)
            text += place.arg(count);
    }
    return text;
}

} // namespace maintenance
