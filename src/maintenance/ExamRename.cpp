#include "maintenance/ExamRename.h"

#include <algorithm>
#include <optional>

#include "library/Catalogue.h"
#include "library/ExamName.h"
#include "library/Settings.h"
#include "platform/database/ColumnDeclaration.h"
#include "platform/database/Recordset.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/database/TableNames.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using database::Connection;
using database::SqlPiece;
using database::sqlWith;
using database::Statement;

namespace {

const QString examColumn = u"考试名称"_s;

/// In 设置表, by position: the value, and the values that it was put together of.
constexpr int settingField = 2;
constexpr int choicesField = 5;

QStringList tablesOfExams(Connection& connection)
{
    QStringList tables;
    for (const QString& table : database::tableNames(connection)) {
        if (database::columnNames(connection, table).contains(examColumn))
            tables.append(table);
    }
    return tables;
}

/// What no name can be, whatever the library holds.
QString spellingFault(const QString& name)
{
    if (name.trimmed().isEmpty())
        return u"考试名称不能是空的。"_s;
    if (name != name.trimmed())
        return u"考试名称的两端不能有空格。"_s;
    if (name.contains(u','))
        return u"考试名称里不能有逗号“,”，几次考试的名称之间用它隔开。"_s;
    if (name.contains(u'\''))
        return u"考试名称里不能有单引号“'”，这样的考试不能浏览和统计。"_s;
    return name == library::AllOfThem ? u"“(全部)”在分析设置里代表所有考试，不能作考试名称。"_s
                                      : QString();
}

/// Rows that bear the name, whatever the case of its letters, and are not the exam's.
qint64 rowsOfOthers(Connection& connection, const QString& table, const QString& exam,
                    const QString& name)
{
    Statement rows(connection, sqlWith(u"select count(*) from %1 where 考试名称=?1 and "
                                       "考试名称<>?2 collate binary"_s,
                                       {SqlPiece::names({table})}));
    rows.bind({name, exam});
    return rows.step() ? rows.integer(0) : 0;
}

/// The names of a list joined by ",", with the exam renamed; nothing if the list lacks it.
std::optional<QString> renamedIn(const QString& list, const QString& exam, const QString& name)
{
    QStringList names = list.split(u',');
    if (!names.contains(exam))
        return {};
    std::ranges::replace(names, exam, name);
    return names.join(u',');
}

void renameInSetting(Connection& connection, const QString& exam, const QString& name)
{
    database::Recordset rows;
    rows.Open(u"select * from 设置表 where 名称=?"_s, {library::ComparedExams}, connection);
    for (; !rows.Eof(); rows.MoveNext()) {
        for (const int field : {settingField, choicesField}) {
            if (field >= rows.fieldCount())
                continue;
            if (const auto renamed = renamedIn(rows.Fields(field).Value().text(), exam, name))
                rows.Fields(field).setValue(*renamed);
        }
        rows.Update();
    }
}

} // namespace

QStringList examsByNumber(Connection& connection)
{
    QStringList names;
    Statement rows(connection, u"select 考试名称 from 考试名称表 order by 考试编号, rowid"_s);
    while (rows.step())
        names.append(rows.text(0));
    names.removeDuplicates();
    names.removeAll(QString());
    return names;
}

QString renameFault(Connection& connection, const QString& exam, const QString& name)
{
    QString fault = spellingFault(name);
    QStringList others = examsByNumber(connection);
    others.removeAll(exam);
    if (fault.isEmpty() && others.contains(name))
        fault = u"已有考试“%1”，请换一个名称。"_s.arg(name);
    if (fault.isEmpty())
        fault = library::examNameFault(name, others);
    if (!fault.isEmpty())
        return fault;
    for (const QString& table : tablesOfExams(connection)) {
        if (const qint64 count = rowsOfOthers(connection, table, exam, name))
            return u"“%1”里还有 %2 行写着考试“%3”，请换一个名称。"_s.arg(
                table, QString::number(count), name);
    }
    return {};
}

QStringList hiddenByRename(Connection& connection, const QString& exam, const QString& name)
{
    const QStringList before = examsByNumber(connection);
    QStringList after = before;
    std::ranges::replace(after, exam, name);
    const QStringList shownBefore = library::listedExams(before);
    const QStringList shownAfter = library::listedExams(after);
    QStringList hidden;
    for (qsizetype i = 0; i < after.size(); ++i) {
        if (shownBefore.contains(before[i]) && !shownAfter.contains(after[i]))
            hidden.append(after[i]);
    }
    return hidden;
}

void renameExam(Connection& connection, const QString& exam, const QString& name)
{
    for (const QString& table : tablesOfExams(connection)) {
        // The first comparison is the one that the index serves.
        Statement rows(connection, sqlWith(u"update %1 set 考试名称=?1 where 考试名称=?2 and "
                                           "考试名称=?2 collate binary"_s,
                                           {SqlPiece::names({table})}));
        rows.bind({name, exam});
        rows.run();
    }
    renameInSetting(connection, exam, name);
}

} // namespace maintenance
