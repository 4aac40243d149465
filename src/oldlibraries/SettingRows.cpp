#include "oldlibraries/SettingRows.h"

#include <algorithm>

#include <QStringList>

#include "oldlibraries/FaultKind.h"
#include "platform/database/ColumnDeclaration.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::columnNames;
using database::SqlPiece;
using database::sqlWith;
using database::Statement;
using runtime::Value;

namespace {

const QString settingTable = u"设置表"_s;
const QString colorTable = u"颜色表"_s;

/// A statement that adds a row of the empty library. A column that has another name here is the one
/// at its place.
QString insertion(database::Connection& library, database::Connection& emptyLibrary,
                  const QString& table)
{
    const QStringList present = columnNames(library, table);
    QStringList columns;
    for (const QString& known : columnNames(emptyLibrary, table)) {
        const bool isCalledSo = present.contains(known, Qt::CaseInsensitive);
        columns.append(isCalledSo ? known : present.value(columns.size()));
    }
    return sqlWith(u"insert into %1(%2) values(%3)"_s,
                   {SqlPiece::names({table}), SqlPiece::names(columns),
                    SqlPiece::places(1, int(columns.size()))});
}

struct Setting
{
    qint64 rowId;
    /// Counted from 1 in the order of the table; 0 for one that was added.
    qint64 row;
    Value id;
    QString name;
};

QString withoutBlanksBehind(QString name)
{
    while (name.endsWith(u' '))
        name.chop(1);
    return name;
}

/// The settings of a library by their numbers; those without one come last.
std::vector<Setting> settingsOf(database::Connection& library)
{
    Statement rows(library, u"select rowid, row_number() over (order by rowid), ID, 名称 "
                            "from 设置表 order by ID is null, ID, rowid"_s);
    std::vector<Setting> settings;
    while (rows.step())
        settings.push_back({rows.integer(0), rows.integer(1), rows.value(2), rows.text(3)});
    return settings;
}

bool hasName(const std::vector<Setting>& settings, const QString& name)
{
    return std::any_of(settings.begin(), settings.end(), [&](const Setting& setting) {
        return withoutBlanksBehind(setting.name) == withoutBlanksBehind(name);
    });
}

qint64 number(database::Connection& library, const QString& sql)
{
    Statement row(library, sql);
    row.step();
    return row.integer(0);
}

/// Adds the rows that are missing, under numbers that nobody has.
void addMissingRows(database::Connection& library, database::Connection& emptyLibrary,
                    std::vector<Setting>& settings)
{
    qint64 id = number(library, u"select max(max(ID), 0) from 设置表 where typeof(ID)<>'text'"_s);
    Statement rows(emptyLibrary, u"select * from 设置表 order by ID"_s);
    Statement row(library, insertion(library, emptyLibrary, settingTable));
    while (rows.step()) {
        if (hasName(settings, rows.text(1)))
            continue;
        row.reset();
        row.bindInteger(1, ++id);
        for (int column = 1; column < rows.columnCount(); ++column)
            row.bindValue(column + 1, rows.value(column));
        row.run();
        settings.push_back({number(library, u"select last_insert_rowid()"_s), 0, id, rows.text(1)});
    }
}

/// Brings the settings to the front that are no items of the statistics menu.
void arrange(std::vector<Setting>& settings, database::Connection& emptyLibrary)
{
    Statement first(emptyLibrary, u"select 名称 from 设置表 where ID<=4 order by ID"_s);
    auto place = settings.begin();
    while (first.step()) {
        const auto found = std::find_if(place, settings.end(), [&](const Setting& setting) {
            return withoutBlanksBehind(setting.name) == first.text(0);
        });
        std::rotate(place, found, found + 1);
        ++place;
    }
}

/// Numbers the settings from 1. Numbers that others still have are passed by on the way.
void renumber(database::Connection& library, const std::vector<Setting>& settings)
{
    const qint64 below =
        number(library, u"select min(min(ID), 0) from 设置表 where typeof(ID)<>'text'"_s);
    Statement step(library, u"update 设置表 set ID=?1 where rowid=?2"_s);
    qint64 id = below;
    for (const Setting& setting : settings) {
        step.bind({--id, setting.rowId});
        step.run();
    }
    Statement last(library, u"update 设置表 set ID=?1-ID"_s);
    last.bind({below});
    last.run();
}

bool isNumbered(const Setting& setting, qint64 id)
{
    return setting.id.isNumber() && setting.id.toDouble() == double(id);
}

void tellNumbers(const std::vector<Setting>& settings, std::vector<Finding>& findings)
{
    qint64 id = 0;
    for (const Setting& setting : settings) {
        ++id;
        if (setting.row == 0)
            findings.push_back({settingTable, 0, u"名称"_s, shownValue(setting.name),
                                u"旧库没有这项设置，已经加上默认值，ID 是 %1。"_s.arg(id)});
        else if (!isNumbered(setting, id))
            findings.push_back(
                {settingTable, setting.row, u"名称"_s, shownValue(setting.name),
                 u"ID 从“%1”改为 %2。"_s.arg(shownValue(setting.id.text()), QString::number(id))});
    }
}

} // namespace

void completeSettings(database::Connection& library, database::Connection& emptyLibrary,
                      std::vector<Finding>& findings)
{
    std::vector<Setting> settings = settingsOf(library);
    addMissingRows(library, emptyLibrary, settings);
    arrange(settings, emptyLibrary);
    tellNumbers(settings, findings);
    qint64 id = 0;
    if (!std::all_of(settings.begin(), settings.end(),
                     [&](const Setting& setting) { return isNumbered(setting, ++id); }))
        renumber(library, settings);
}

void completeColors(database::Connection& library, database::Connection& emptyLibrary,
                    std::vector<Finding>& findings)
{
    // The charts' lines count from 1.
    Statement rows(emptyLibrary, u"select * from 颜色表 where ID>0 order by ID"_s);
    Statement known(library, u"select 1 from 颜色表 where ID=?"_s);
    Statement row(library, insertion(library, emptyLibrary, colorTable));
    while (rows.step()) {
        known.bind({rows.value(0)});
        const bool isKnown = known.step();
        known.finish();
        if (isKnown)
            continue;
        row.bind({rows.value(0), rows.value(1)});
        row.run();
        findings.push_back({colorTable, 0, u"ID"_s, rows.text(0),
                            u"旧库没有这个编号的曲线颜色，已经加上默认颜色。"_s});
    }
}

} // namespace oldlibraries
