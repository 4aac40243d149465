#include "maintenance/ExamErasure.h"

#include "maintenance/QuotedText.h"
#include "maintenance/Refusal.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;

namespace {

const runtime::Trap erasureTrap{" - Sub EraseExams/Maintenance"};

/// So many rows go at once: few enough to be stopped soon.
constexpr int rowsAtOnce = 3000;

int runWith(database::Connection& connection, const QString& sql,
            const std::vector<runtime::Value>& values)
{
    database::Statement& statement = connection.prepared(sql);
    statement.bind(values);
    return statement.run();
}

library::Occasion occasionOf(const QStringList& exams)
{
    QStringList names;
    for (const QString& exam : exams)
        names.append(shownName(exam));
    return {.text = u"删除考试 "_s + names.join(u'、')};
}

} // namespace

ExamErasure::Result ExamErasure::run(const QStringList& exams, runtime::Progress& progress,
                                     library::Backup backup)
{
    if (exams.isEmpty()) {
        runtime::warn(u"没有选择考试，请先在考试列表里选择要删除的考试。"_s);
        return Result::Declined;
    }
    if (!library::hasRoomForBackup(m_library, backup))
        return Result::Stopped;
    ErasureCounts counts;
    if (!erasureTrap([&] { counts = countErasure(m_library, exams); }))
        return Result::Stopped;
    if (!isWanted(counts, backup))
        return Result::Declined;
    bool isDone = false;
    {
        const library::BackupBeforeWrite copy(m_library, progress, backup, occasionOf(exams));
        unlessRefused(erasureTrap, [&] { isDone = eraseAll(exams, counts, progress); });
    }
    progress.finish();
    if (!isDone)
        return Result::Stopped;
    erasureTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    runtime::MsgBox(u"已经彻底删除 %1 次考试：成绩表 %2 行，考试名称表 %3 行，教师名单 %4 行。"_s
                        .arg(exams.size())
                        .arg(m_erased.scoreRows)
                        .arg(m_erased.examRows)
                        .arg(m_erased.teacherRows));
    return Result::Done;
}

bool ExamErasure::isWanted(const ErasureCounts& counts, library::Backup backup) const
{
    const QString copy = backup == library::Backup::Make ? u"删除前会在成绩库旁边留一份备份。"_s
                                                         : u"这次不留备份，删除后不可恢复。"_s;
    const runtime::Choice choice{.text = u"要彻底删除这些考试吗？\n\n"_s + counts.text() + u"\n\n"_s
                                         + copy,
                                 .buttons = {u"彻底删除"_s, u"取消"_s},
                                 .safe = 1,
                                 .title = u"彻底删除考试"_s};
    return runtime::choose(choice) != choice.safe;
}

bool ExamErasure::eraseAll(const QStringList& exams, const ErasureCounts& asked,
                           runtime::Progress& progress)
{
    database::WriteBatch batch(m_library.Conn);
    if (countErasure(m_library, exams) != asked)
        throw Refusal(
            u"回答问题期间别的程序改动了这些考试，什么也没有删除。请再看一遍要删除的内容。"_s);
    const bool hasTeachers = m_library.Conn.columns(u"教师表"_s).count() > 0;
    m_erased = {};
    for (const QString& exam : exams) {
        if (!eraseScores(exam, asked.scoreRows(), progress))
            return false;
        m_erased.examRows += runWith(m_library.Conn,
                                     u"delete from 考试名称表 where 考试名称=?1 and "
                                     "考试名称=?1 collate binary"_s,
                                     {exam});
        if (hasTeachers)
            m_erased.teacherRows += runWith(m_library.Conn,
                                            u"delete from 教师表 where 考试名称=?1 and "
                                            "考试名称=?1 collate binary"_s,
                                            {exam});
    }
    batch.commit();
    return true;
}

/// False if the run was cancelled.
bool ExamErasure::eraseScores(const QString& exam, qint64 total, runtime::Progress& progress)
{
    for (int gone = rowsAtOnce; gone == rowsAtOnce;) {
        progress.report(u"删除考试：%1..."_s.arg(shownName(exam)), int(m_erased.scoreRows),
                        int(total));
        if (progress.cancelled())
            return false;
        gone = runWith(m_library.Conn,
                       u"delete from 成绩表 where rowid in (select rowid from 成绩表 where "
                       "考试名称=?1 and 考试名称=?1 collate binary limit ?2)"_s,
                       {exam, rowsAtOnce});
        m_erased.scoreRows += gone;
    }
    return true;
}

} // namespace maintenance
