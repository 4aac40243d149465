#include "maintenance/ClassStreams.h"

#include <QHash>

#include "maintenance/SchoolClasses.h"
#include "platform/database/Recordset.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap commandTrap{" - Private Sub Command1_Click/FormSheZhiWenLi"};

/// How many rows of 成绩表 each class has.
QHash<QString, int> scoreRows(database::Connection& connection)
{
    QHash<QString, int> rows;
    database::Recordset counts;
    counts.Open(u"select 班级,count(*) from 成绩表 where 班级 is not null group by 班级"_s,
                connection);
    for (; !counts.Eof(); counts.MoveNext())
        rows.insert(counts.Fields(0).Value().text(), int(runtime::Val(counts.Fields(1).Value())));
    return rows;
}

} // namespace

const QStringList& ClassStreams::load()
{
    const Trap trap{" - Private Sub Form_Load/FormSheZhiWenLi"};
    trap([&] { m_classes = classesOfStudents(m_library.Conn); });
    return m_classes;
}

ClassStreams::Group ClassStreams::chosen(const QStringList& science) const
{
    Group group{u"理"_s, m_classes};
    group.classes.removeIf([&](const QString& name) { return !science.contains(name); });
    return group;
}

ClassStreams::Group ClassStreams::others(const QStringList& science) const
{
    Group group{u"文"_s, m_classes};
    group.classes.removeIf([&](const QString& name) { return science.contains(name); });
    return group;
}

QString ClassStreams::question(const QStringList& science) const
{
    const QHash<QString, int> rows = scoreRows(m_library.Conn);
    QStringList counts;
    QString warning;
    for (const Group& group : {chosen(science), others(science)}) {
        int rowsOfGroup = 0;
        for (const QString& name : group.classes)
            rowsOfGroup += rows.value(name);
        counts += {QString::number(group.classes.size()), QString::number(rowsOfGroup)};
        if (group.classes.contains(QString()))
            warning =
                u"\n有学生没有班级，设为%1的语句会出错，这些班的科类不变。"_s.arg(group.stream);
    }
    return u"选中的 %1 个班（%2 条成绩）科类设为理，没有选中的 %3 个班（%4 条成绩）设为文。"_s.arg(
               counts[0], counts[1], counts[2], counts[3])
           + warning + u"\n学生信息里的科类不变。设置以后，各次考试要重新计算总分和名次。"_s;
}

bool ClassStreams::confirmed(const QStringList& science, library::Backup backup) const
{
    if (!library::hasRoomForBackup(m_library, backup))
        return false;
    int pressed = 1;
    commandTrap([&] {
        pressed = runtime::choose({.text = question(science),
                                   .buttons = {u"设置"_s, u"取消"_s},
                                   .safe = 1,
                                   .title = u"提示"_s});
    });
    return pressed == 0;
}

void ClassStreams::update(const Group& group)
{
    if (group.classes.isEmpty())
        return;
    commandTrap([&] {
        std::vector<runtime::Value> values{group.stream};
        for (const QString& name : group.classes)
            values.emplace_back(classNumber(name));
        const auto places = database::SqlPiece::places(2, int(group.classes.size()));
        database::Statement statement(
            m_library.Conn,
            database::sqlWith(u"update 成绩表 set 科类=?1 where 班级 in (%1)"_s, {places}));
        statement.bind(values);
        statement.run();
    });
}

void ClassStreams::set(const QStringList& science, runtime::Progress& progress,
                       library::Backup backup)
{
    const bool isDone = commandTrap([&] {
        const library::BackupBeforeWrite copy(m_library, progress, backup, {u"设置文理"_s});
        database::WriteBatch batch(m_library.Conn);
        update(chosen(science));
        update(others(science));
        batch.commit();
    });
    progress.finish();
    if (!isDone)
        return;
    runtime::MsgBox(u"设置完毕！"_s);
}

} // namespace maintenance
