#include "maintenance/SubjectRemoval.h"

#include <algorithm>

#include "library/ColumnNames.h"
#include "maintenance/RemovalQuestion.h"
#include "maintenance/SubjectUses.h"
#include "platform/database/ColumnRemoval.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap removalTrap{" - Private Sub Command1_Click/FormDelKM"};

QStringList fieldNames(database::Connection& connection, const QString& sql)
{
    QStringList names;
    removalTrap([&] {
        database::Recordset rows;
        rows.Open(sql, connection);
        for (int i = 0; i < rows.fieldCount(); ++i)
            names.append(rows.Fields(i).Name());
    });
    return names;
}

/// The columns of subjects as they leave the tables.
class Dropping
{
public:
    explicit Dropping(database::Connection& connection)
        : m_connection(connection),
          m_scoreFields(fieldNames(connection, u"select * from 成绩表"_s)),
          m_examFields(fieldNames(connection, u"select * from 考试名称表"_s)),
          m_scores(connection, u"成绩表"_s)
    {
    }

    void drop(const QString& subject)
    {
        for (const QString& column : library::columnsOf(subject)) {
            if (m_scoreFields.contains(column, Qt::CaseInsensitive))
                removalTrap([&] { m_scores.drop(column); });
            if (m_examFields.contains(column, Qt::CaseInsensitive))
                execute(u"ALTER TABLE 考试名称表 DROP COLUMN %1"_s, column);
        }
        execute(u"ALTER TABLE 教师表 DROP COLUMN %1"_s, subject);
    }

    /// False if `goOn` ended it.
    bool finish(const database::ColumnRemoval::GoOn& goOn) { return m_scores.finish(goOn); }

private:
    void execute(const QString& sql, const QString& column)
    {
        removalTrap([&] {
            m_connection.Execute(database::sqlWith(sql, {database::SqlPiece::name(column)}));
        });
    }

    database::Connection& m_connection;
    QStringList m_scoreFields;
    QStringList m_examFields;
    database::ColumnRemoval m_scores;
};

/// Asks whether columns may go although formulas and settings name them.
bool isConfirmed(const SubjectUses& uses)
{
    constexpr int goOn = 0;
    return runtime::choose({.text = u"要删除的科目还写在：\n\n"_s + uses.lines()
                                    + u"\n这些公式和设置保持原样。公式里的科目没有了，"
                                      "计算总分时会提示，总分里也不再有它的分。"_s,
                            .buttons = {u"仍然删除"_s, u"取消"_s},
                            .safe = 1,
                            .title = u"提示"_s})
           == goOn;
}

} // namespace

SubjectRemoval::Result SubjectRemoval::run(const QStringList& selected, runtime::Progress& progress,
                                           library::Backup backup)
{
    if (!isWanted(selected, backup))
        return Result::Declined;
    bool isDone = false;
    {
        const library::BackupBeforeWrite copy(m_library, progress, backup,
                                              {u"删除科目 "_s + selected.join(u'、')});
        removalTrap([&] { isDone = dropAll(selected, progress); });
    }
    progress.finish();
    if (!isDone)
        return Result::Stopped;
    removalTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    runtime::MsgBox(u"删除完毕！"_s);
    return Result::Done;
}

bool SubjectRemoval::isWanted(const QStringList& selected, library::Backup backup) const
{
    if (selected.isEmpty()) {
        runtime::warn(u"请选择要删除的 科目！"_s);
        return false;
    }
    if (!library::hasRoomForBackup(m_library, backup))
        return false;
    if (!isRemovalConfirmed(u"确实要删除以下科目吗？删除后不可恢复，最好在删除前备份数据库。"_s,
                            selected))
        return false;
    SubjectUses uses;
    removalTrap([&] { uses = usesOf(m_library, selected); });
    return !uses.any() || isConfirmed(uses);
}

bool SubjectRemoval::dropAll(const QStringList& selected, runtime::Progress& progress)
{
    database::WriteBatch batch(m_library.Conn);
    Dropping dropping(m_library.Conn);
    std::for_each(selected.rbegin(), selected.rend(),
                  [&](const QString& subject) { dropping.drop(subject); });
    const bool isComplete = dropping.finish([&](qint64 done, qint64 total) {
        progress.report(u"删除科目..."_s, int(done), int(total));
        return !progress.cancelled();
    });
    if (isComplete)
        batch.commit();
    return isComplete;
}

} // namespace maintenance
