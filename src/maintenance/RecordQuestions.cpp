#include "maintenance/RecordQuestions.h"

#include <QStringList>

#include "platform/database/Statement.h"
#include "platform/runtime/Dialogs.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

const QString title = u"提示"_s;
const QString giveUp = u"取消"_s;

/// The values of the first row of a statement; empty without rows.
std::vector<Value> firstRow(database::Connection& connection, const QString& sql,
                            const std::vector<Value>& values)
{
    database::Statement& rows = connection.prepared(sql);
    rows.bind(values);
    std::vector<Value> found;
    if (rows.step()) {
        for (int column = 0; column < rows.columnCount(); ++column)
            found.push_back(rows.value(column));
    }
    rows.finish();
    return found;
}

qint64 count(database::Connection& connection, const QString& sql, const std::vector<Value>& values)
{
    return qint64(firstRow(connection, sql, values).front().toDouble());
}

bool agrees(const QString& text)
{
    const runtime::Choice choice{
        .text = text, .buttons = {u"仍然保存"_s, giveUp}, .safe = 1, .title = title};
    return runtime::choose(choice) != choice.safe;
}

/// "文（120 人）、理（300 人）、艺（1 人）": the streams after the save.
QStringList streamsAfter(database::Connection& connection, const RecordChange& change)
{
    database::Statement& rows = connection.prepared(
        u"select 科类, count(*) from (select 科类 from 信息表 where ID<>?1 union all select ?2) "
        "group by 科类 order by 科类"_s);
    rows.bind({change.id, change.after.stream});
    QStringList streams;
    while (rows.step()) {
        const QString name = rows.text(0).isEmpty() ? u"没有科类"_s : rows.text(0);
        streams.append(u"%1（%2 人）"_s.arg(name, rows.value(1).text()));
    }
    return streams;
}

bool mayAddStream(database::Connection& connection, const RecordChange& change)
{
    constexpr int mostStreams = 2;
    if (change.after.stream == change.before.stream
        || count(connection, u"select count(*) from 信息表 where ID<>? and 科类 is ?"_s,
                 {change.id, change.after.stream})
               > 0)
        return true;
    const QStringList streams = streamsAfter(connection, change);
    return streams.size() <= mostStreams
           || agrees(u"保存以后成绩库里有 %1 个科类：%2。\n成绩库最多两个科类，多了就读不出科类，"
                     "浏览和统计都做不了，直到改回来。"_s.arg(QString::number(streams.size()),
                                                              streams.join(u'、')));
}

/// The names of the others who have the class and number that the student will have.
QStringList sameNumber(database::Connection& connection, const RecordChange& change)
{
    database::Statement& rows = connection.prepared(
        u"select 姓名 from 信息表 where 班级=? and 学号=? and ID<>? order by rowid"_s);
    rows.bind({change.after.classNumber, change.after.number, change.id});
    QStringList names;
    while (rows.step())
        names.append(rows.text(0));
    return names;
}

bool maySharePlace(database::Connection& connection, const RecordChange& change)
{
    if (change.after.classNumber == change.before.classNumber
        && change.after.number == change.before.number)
        return true;
    const QStringList others = sameNumber(connection, change);
    constexpr int mostShown = 3;
    QString names = others.mid(0, mostShown).join(u'、');
    if (others.size() > mostShown)
        names += u" 等"_s;
    return others.isEmpty()
           || agrees(
               u"%1 班 %2 号已经有 %3 人：%4。\n保存以后几个人同号，导入成绩时只认得其中一人。"_s
                   .arg(change.after.classNumber.text(), change.after.number.text(),
                        QString::number(others.size()), names));
}

std::optional<NameScope> askAboutName(database::Connection& connection, const RecordChange& change)
{
    if (change.after.name == change.before.name)
        return NameScope::RecordAlone;
    const qint64 rows = count(
        connection, u"select count(*) from 成绩表 where id=? and 姓名 is not ? collate binary"_s,
        {change.id, change.after.name});
    if (rows == 0)
        return NameScope::RecordAlone;
    const int button = runtime::choose(
        {.text = u"“%1”改名为“%2”。以前的 %3 条成绩里还是原来的姓名，要一起改吗？"_s.arg(
             change.before.name.text(), change.after.name.text(), QString::number(rows)),
         .buttons = {u"以前的成绩也改"_s, u"只改这里"_s, giveUp},
         .safe = 1,
         .title = title});
    if (button == 2)
        return {};
    return button == 0 ? NameScope::EarlierScores : NameScope::RecordAlone;
}

} // namespace

std::optional<NameScope> askAboutChange(database::Connection& connection,
                                        const RecordChange& change)
{
    if (!mayAddStream(connection, change) || !maySharePlace(connection, change))
        return {};
    return askAboutName(connection, change);
}

void renameScores(database::Connection& connection, qint64 id, const Value& name)
{
    database::Statement& rows = connection.prepared(u"update 成绩表 set 姓名=? where id=?"_s);
    rows.bind({name, id});
    rows.run();
}

} // namespace maintenance
