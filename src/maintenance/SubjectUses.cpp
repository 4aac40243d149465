#include "maintenance/SubjectUses.h"

#include <algorithm>
#include <functional>

#include "library/ColumnNames.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/Recordset.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using database::Recordset;

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

QString fieldText(Recordset& rows, const QString& field)
{
    return rows.Fields(field).Value().text();
}

/// What `usesIn` finds in the rows of the statement, added up.
int usesInRows(database::Connection& connection, const QString& sql,
               const std::function<qsizetype(Recordset&)>& usesIn)
{
    Recordset rows;
    rows.Open(sql, connection);
    qsizetype uses = 0;
    for (; !rows.Eof(); rows.MoveNext())
        uses += usesIn(rows);
    return int(uses);
}

int examFormulas(database::Connection& connection, const Removed& removed,
                 const QStringList& totals)
{
    return usesInRows(connection, u"select * from 考试名称表"_s, [&](Recordset& exam) {
        return std::count_if(totals.begin(), totals.end(), [&](const QString& total) {
            return !removed.isColumn(total) && removed.isInFormula(fieldText(exam, total));
        });
    });
}

int defaultFormulas(database::Connection& connection, const Removed& removed)
{
    return usesInRows(connection, u"select * from 总分公式"_s, [&](Recordset& formula) {
        return !removed.isColumn(fieldText(formula, u"总分"_s))
               && removed.isInFormula(fieldText(formula, u"公式"_s));
    });
}

/// Those whose reports count by the column 总分, whatever else a library has.
int settings(database::Connection& connection, const Removed& removed)
{
    if (!removed.isColumn(library::GrandTotal))
        return 0;
    return usesInRows(connection, u"select * from 设置表"_s, [](Recordset& setting) {
        const QString name = fieldText(setting, u"名称"_s);
        return name == u"总分上线人数"_s || name == u"历次总分上线人数"_s;
    });
}

int conditions(database::Connection& connection, const Removed& removed)
{
    return usesInRows(connection, u"select * from 详细设置表"_s, [&](Recordset& condition) {
        return removed.isColumn(fieldText(condition, u"科目"_s));
    });
}

int displays(database::Connection& connection, const Removed& removed)
{
    return usesInRows(connection, u"select * from 自定义显示表"_s, [&](Recordset& display) {
        return removed.isInSelection(fieldText(display, u"显示项目"_s));
    });
}

} // namespace

SubjectUses usesOf(library::ScoreLibrary& scoreLibrary, const QStringList& columns)
{
    database::Connection& connection = scoreLibrary.Conn;
    const database::ReadBatch reading(connection);
    const Removed removed(columns);
    return {.examFormulas = examFormulas(connection, removed, scoreLibrary.catalogue.TotalColumns),
            .defaultFormulas = defaultFormulas(connection, removed),
            .settings = settings(connection, removed),
            .conditions = conditions(connection, removed),
            .displays = displays(connection, removed)};
}

QString SubjectUses::lines() const
{
    QString text;
    for (const auto& [place, count] : {std::pair{u"各次考试的总分公式：%1 个\n"_s, examFormulas},
                                       {u"总分公式的默认值：%1 个\n"_s, defaultFormulas},
                                       {u"按总分上线的分析设置：%1 项\n"_s, settings},
                                       {u"各科条件：%1 条\n"_s, conditions},
                                       {u"自定义显示：%1 项\n"_s, displays}}) {
        if (count > 0)
            text += place.arg(count);
    }
    return text;
}

} // namespace maintenance
