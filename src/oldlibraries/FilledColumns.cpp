#include "oldlibraries/FilledColumns.h"

#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

/// Scores have what their student has.
void fillColumn(database::Connection& library, const QString& table, const QString& column)
{
    const QString value = neededValue(table, column);
    if (value.isEmpty())
        return;
    const database::SqlPiece name = database::SqlPiece::names({column});
    database::Statement all(library, database::sqlWith(u"update %1 set %2=?1"_s,
                                                       {database::SqlPiece::names({table}), name}));
    all.bind({value});
    all.run();
    if (table != u"成绩表"_s)
        return;
    database::Statement own(library, database::sqlWith(u"update 成绩表 set %1=s.%1 from 信息表 s "
                                                       "where s.ID=成绩表.id and s.%1<>''"_s,
                                                       {name}));
    own.run();
}

/// Gives columns of 设置表 that were missing the values of the settings that both libraries know.
void fillSettings(database::Connection& library, database::Connection& emptyLibrary,
                  const QStringList& columns)
{
    for (const QString& column : columns) {
        const database::SqlPiece name = database::SqlPiece::names({column});
        database::Statement rows(emptyLibrary,
                                 database::sqlWith(u"select %1, 名称 from 设置表"_s, {name}));
        database::Statement row(
            library,
            database::sqlWith(u"update 设置表 set %1=?1 where 名称=?2 collate rtrim"_s, {name}));
        while (rows.step()) {
            row.bind({rows.value(0), rows.value(1)});
            row.run();
        }
    }
}

} // namespace

QString neededValue(const QString& table, const QString& column)
{
    if (table != u"信息表"_s && table != u"成绩表"_s && table != u"考试名称表"_s)
        return {};
    // A school without streams has "理".
    return column == u"科类"_s ? u"理"_s : column == u"类别代码"_s ? u"1"_s : QString();
}

void fillColumns(database::Connection& library, database::Connection& emptyLibrary,
                 const QString& table, const QStringList& added)
{
    for (const QString& column : added)
        fillColumn(library, table, column);
    // Without names no row is the one of a setting.
    if (table != u"设置表"_s || added.contains(u"名称"_s))
        return;
    QStringList values = added;
    values.removeAll(u"ID"_s);
    fillSettings(library, emptyLibrary, values);
}

} // namespace oldlibraries
