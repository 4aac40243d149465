#include "export/ExportOffers.h"

#include "platform/database/Recordset.h"
#include "platform/runtime/Trap.h"

namespace exporting {

using namespace Qt::StringLiterals;

QStringList classesToExport(library::ScoreLibrary& scoreLibrary)
{
    const runtime::Trap trap{" - Private Sub Form_Load/FormDaoChu"};
    QStringList classes;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select distinct 班级 from 信息表 where 班级 is not null order by 班级"_s,
                  scoreLibrary.Conn);
        for (; !rows.Eof(); rows.MoveNext())
            classes.append(rows.Fields(0).Value().text());
    });
    return classes;
}

} // namespace exporting
