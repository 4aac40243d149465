#include "workbench/Offers.h"

#include "library/ColumnNames.h"
#include "library/Settings.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace workbench {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap trap{" - Sub init/FormKaoShi"};

/// The field of each row of a statement; a failing step is shown and the next one runs.
QStringList fieldOfRows(const QString& sql, int field, database::Connection& connection)
{
    database::Recordset rows;
    trap([&] { rows.Open(sql, connection); });
    qint64 count = 0;
    trap([&] { count = rows.RecordCount(); });
    QStringList texts;
    for (qint64 row = 0; row < count; ++row) {
        trap([&] { texts.append(rows.Fields(field).Value().text()); });
        trap([&] { rows.MoveNext(); });
    }
    return texts;
}

} // namespace

QStringList columnFamilies()
{
    return {library::ScoreFamily, library::ZScoreFamily, library::TScoreFamily};
}

QStringList sortColumns(library::ScoreLibrary& scoreLibrary)
{
    database::Recordset rows;
    trap([&] { rows.Open(u"select *  from 成绩表"_s, scoreLibrary.Conn); });
    QStringList names;
    trap([&] {
        for (int field = library::fieldsNotOffered; field < rows.fieldCount(); ++field)
            names.append(rows.Fields(field).Name());
    });
    return names;
}

QStringList statisticsItems(library::ScoreLibrary& scoreLibrary)
{
    constexpr int nameField = 1;
    QStringList items{u"高分段、低分段"_s};
    items += fieldOfRows(u"select *  from 设置表 where Id>4 order by ID"_s, nameField,
                         scoreLibrary.Conn);
    items.removeAll(library::ComparedExams);
    return items;
}

QStringList classesOf(const library::Catalogue& catalogue, int stream)
{
    QStringList numbers;
    if (stream >= 0 && size_t(stream) < catalogue.ClassTable.size()) {
        for (const library::ClassEntry& entry : catalogue.ClassTable[size_t(stream)])
            numbers.append(runtime::doubleText(entry.number));
    }
    return numbers;
}

QStringList classes(const library::Catalogue& catalogue)
{
    QStringList numbers;
    for (int stream = 0; stream < catalogue.Streams.size(); ++stream)
        numbers += classesOf(catalogue, stream);
    return numbers;
}

QStringList categories(library::ScoreLibrary& scoreLibrary)
{
    return fieldOfRows(u"select distinct 类别代码 from 信息表"_s, 0, scoreLibrary.Conn);
}

} // namespace workbench
