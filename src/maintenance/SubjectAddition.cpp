#include "maintenance/SubjectAddition.h"

#include <algorithm>
#include <array>

#include "library/ColumnNames.h"
#include "library/FormulaTrim.h"
#include "library/SubjectColumns.h"
#include "library/TextLength.h"
#include "maintenance/Refusal.h"
#include "maintenance/TypedFormula.h"
#include "platform/database/ColumnDeclaration.h"
#include "platform/database/Sql.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap subjectTrap{" - Sub AddSubject/SubjectAddition"};

/// The ending of a derived column that the name has; "" for none.
QString derivedEnding(const QString& name)
{
    QStringList endings = library::columnsOf({});
    endings.removeAll(QString());
    for (const QString& ending : std::as_const(endings)) {
        if (name.endsWith(ending, Qt::CaseInsensitive))
            return ending;
    }
    return {};
}

QString spellingFault(const QString& name)
{
    if (name.isEmpty())
        return u"请输入科目名称。"_s;
    if (name.size() > library::LongestText)
        return u"科目名称最多 %1 个字，现在有 %2 个字。"_s.arg(library::LongestText)
            .arg(name.size());
    if (!database::isBareName(name))
        return u"科目名称只能由汉字、字母、数字和下划线组成，不能以数字开头。"_s;
    if (database::isReservedName(name))
        return u"“%1”是数据库的保留字，不能作科目名称，请换一个名称。"_s.arg(name);
    const QString ending = derivedEnding(name);
    return ending.isEmpty()
               ? QString()
               : u"科目名称不能以“%1”结尾，程序用这样的名称存名次和标准分。"_s.arg(ending);
}

/// Why the columns of the subject cannot stand in a table.
QString tableFault(database::Connection& connection, const QString& table, const QString& subject)
{
    const QStringList there = database::columnNames(connection, table);
    if (there.isEmpty())
        return u"成绩库里没有“%1”，不能添加科目。"_s.arg(table);
    for (const QString& column : library::columnsOf(subject)) {
        if (!there.contains(column, Qt::CaseInsensitive))
            continue;
        if (column == subject)
            return u"“%1”里已经有“%2”这一列，请换一个名称。"_s.arg(table, subject);
        return u"“%1”里已经有“%2”这一列，科目不能叫“%3”。"_s.arg(table, column, subject);
    }
    return {};
}

} // namespace

QString SubjectAddition::knownFormula(const QString& total) const
{
    QString formula;
    if (!database::isBareName(total))
        return formula;
    subjectTrap([&] {
        database::Recordset rows;
        library::openFormula(rows, total, m_library.Conn);
        if (!rows.Eof())
            formula = rows.Fields(u"公式"_s).Value().text();
    });
    return formula;
}

bool SubjectAddition::run(const NewSubject& typed, runtime::Progress& progress,
                          library::Backup backup)
{
    const NewSubject subject{.name = typed.name, .formula = normalFormula(typed.formula)};
    QString fault;
    if (!subjectTrap([&] { fault = faultOf(subject); }))
        return false;
    if (!fault.isEmpty()) {
        runtime::warn(fault);
        return false;
    }
    if (!library::hasRoomForBackup(m_library, backup))
        return false;
    bool isDone = false;
    {
        const library::BackupBeforeWrite copy(m_library, progress, backup,
                                              {u"添加科目 "_s + subject.name});
        isDone = unlessRefused(subjectTrap, [&] { add(subject); });
    }
    progress.finish();
    if (!isDone)
        return false;
    subjectTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    return true;
}

QString SubjectAddition::nextSteps(const NewSubject& added)
{
    const QString& subject = added.name;
    if (library::isTotal(subject) && normalFormula(added.formula).isEmpty())
        return u"已添加总分“%1”，它还没有公式，不会计算。\n\n"
               "请在“数据维护”的“总分设置”里选中考试，设好公式，再计算总分。以后导入的考试也要这样设。"_s
                   .arg(subject);
    if (library::isTotal(subject))
        return u"已添加总分“%1”，以后导入的考试都按它的公式计算。\n\n"
               "以前的考试还没有它的公式：请在“数据维护”的“总分设置”里选中这些考试，设好公式，再计算总分。"_s
                   .arg(subject);
    return u"已添加科目“%1”。\n\n"
           "以后导入考试时，工作表里有“%1”这一列就会导入，并询问满分。"
           "要计入总分，请在“数据维护”的“总分设置”里把它加进各次考试的公式。"_s.arg(subject);
}

/// "" if the subject can be added.
QString SubjectAddition::faultOf(const NewSubject& subject) const
{
    QString fault = spellingFault(subject.name);
    if (!fault.isEmpty())
        return fault;
    for (const QString& table : library::subjectTables()) {
        QString inTable = tableFault(m_library.Conn, table, subject.name);
        if (!inTable.isEmpty())
            return inTable;
    }
    if (!library::isTotal(subject.name))
        return {};
    if (subject.formula.size() > library::LongestText)
        return u"总分公式最多 %1 个字，现在有 %2 个字。"_s.arg(library::LongestText)
            .arg(subject.formula.size());
    return typedFormulaFault(
        subject.formula,
        database::columnNames(m_library.Conn, u"考试名称表"_s).mid(library::fixedExamFields));
}

/// Another program may have added columns since the subject was looked at.
void SubjectAddition::add(const NewSubject& subject) const
{
    database::WriteBatch batch(m_library.Conn);
    const QString fault = faultOf(subject);
    if (!fault.isEmpty())
        throw Refusal(fault);
    for (const auto& columns :
         {library::addedColumns(subject.name), library::addedTRank(subject.name)}) {
        for (const auto& [sql, name] : columns)
            m_library.Conn.Execute(database::sqlWith(sql, {database::SqlPiece::name(name)}));
    }
    if (library::isTotal(subject.name))
        storeFormula(subject);
    batch.commit();
}

void SubjectAddition::storeFormula(const NewSubject& total) const
{
    database::Recordset rows;
    library::openFormula(rows, total.name, m_library.Conn);
    if (rows.Eof()) {
        rows.AddNew();
        rows.Fields(u"总分"_s).setValue(total.name);
    }
    rows.Fields(u"公式"_s).setValue(total.formula);
    rows.Update();
}

} // namespace maintenance
