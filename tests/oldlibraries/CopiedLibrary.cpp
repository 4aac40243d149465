#include "CopiedLibrary.h"

#include "oldlibraries/Completion.h"
#include "oldlibraries/Faults.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/WriteBatch.h"
#include "support/RowTexts.h"

using namespace Qt::StringLiterals;
using database::SqlPiece;
using oldlibraries::Finding;

QString findingTexts(const std::vector<Finding>& findings)
{
    QStringList lines;
    for (const Finding& finding : findings)
        lines.append(QStringList{finding.table, QString::number(finding.row), finding.column,
                                 finding.value, finding.done}
                         .join(u'|'));
    return lines.join(u'\n');
}

CopiedLibrary::CopiedLibrary(const QStringList& subjects) : m_made(subjects)
{
    m_made.scores.Conn.Close();
    conn.Open(path());
}

void CopiedLibrary::execute(const QString& sql)
{
    conn.Execute(sql);
}

QString CopiedLibrary::rows(const QString& sql)
{
    database::Recordset rows;
    rows.Open(sql, conn);
    return support::rowTexts(rows);
}

QString CopiedLibrary::columns(const QString& table)
{
    QStringList names;
    for (const auto& column : database::columnDeclarations(conn, table))
        names.append(column.name);
    return names.join(u' ');
}

void CopiedLibrary::remake(const QString& table,
                           const std::vector<database::ColumnDeclaration>& columns)
{
    const QStringList before = this->columns(table).split(u' ');
    QStringList kept;
    for (const auto& column : columns) {
        if (before.contains(column.name))
            kept.append(column.name);
    }
    database::createTable(conn, u"空的"_s, columns);
    if (!kept.isEmpty())
        execute(database::sqlWith(u"insert into 空的(%1) select %1 from %2 order by rowid"_s,
                                  {SqlPiece::names(kept), SqlPiece::name(table)}));
    execute(database::sqlWith(u"drop table %1"_s, {SqlPiece::name(table)}));
    execute(database::sqlWith(u"alter table 空的 rename to %1"_s, {SqlPiece::name(table)}));
}

void CopiedLibrary::removeColumn(const QString& table, const QString& column)
{
    auto columns = database::columnDeclarations(conn, table);
    std::erase_if(columns, [&](const auto& one) { return one.name == column; });
    remake(table, columns);
}

QString CopiedLibrary::complete()
{
    std::vector<Finding> findings;
    database::WriteBatch batch(conn);
    oldlibraries::completeLibrary(conn, m_made.paths.templateFile(), findings);
    batch.commit();
    return findingTexts(findings);
}

QString CopiedLibrary::faults()
{
    std::vector<Finding> findings;
    oldlibraries::findFaults(conn, findings);
    return findingTexts(findings);
}
