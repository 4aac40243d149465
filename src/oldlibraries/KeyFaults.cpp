#include "oldlibraries/KeyFaults.h"

#include "oldlibraries/FaultKind.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;
using database::SqlPiece;
using database::Statement;
using Key = ColumnDeclaration::Key;

namespace {

void findFaultyRows(database::Connection& library, const TargetTable& table,
                    const ColumnDeclaration& column, std::vector<Finding>& findings)
{
    FaultKind repeated(table.old.name, u"几行都是这个值，原样转入。"_s);
    FaultKind missing(table.old.name, u"没有值，原样转入。"_s);
    Statement rows(library, database::sqlWith(
                                u"select rowid, %1 from %2 where %1 is null or %1 in "
                                "(select %1 from %2 group by %1 having count(*)>1) "
                                "order by rowid"_s,
                                {SqlPiece::names({column.name}), SqlPiece::names({table.name})}));
    while (rows.step())
        (rows.isNull(1) ? missing : repeated).add(rows.integer(0), column.name, rows.text(1));
    repeated.tell(findings);
    missing.tell(findings);
}

} // namespace

void findKeyFaults(database::Connection& library, const TargetTable& keyed,
                   std::vector<Finding>& findings)
{
    for (const ColumnDeclaration& column : keyed.columns) {
        if (column.key == Key::None)
            continue;
        findings.push_back(
            {keyed.old.name,
             0,
             column.name,
             {},
             column.key == Key::AutoNumber
                 ? u"有空的或重复的编号，新库里这一列不能自动编号，以后新加的行没有编号。"_s
                 : u"有空的或重复的值，新库里这一列不再防止重复。"_s});
        findFaultyRows(library, keyed, column, findings);
    }
}

} // namespace oldlibraries
