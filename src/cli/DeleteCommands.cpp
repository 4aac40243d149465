#include "cli/ChosenOptions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "maintenance/ExamErasure.h"
#include "maintenance/ExamRemoval.h"
#include "maintenance/SubjectRemoval.h"

namespace cli {

using namespace Qt::StringLiterals;
using maintenance::SubjectRemoval;

namespace {

/// The names that stand behind the library, joined by commas.
QStringList namesOf(const Session& session)
{
    QStringList names;
    for (const QString& name : session.arguments.positionals().value(1).split(u','))
        names.append(name.trimmed());
    names.removeAll(QString());
    return names;
}

/// The exams that are named in the list behind the library, or one by one as they stand. Throws
/// UsageError for none, and for one that the open library does not have.
QStringList storedExams(const Session& session)
{
    QStringList exams = namesOf(session) + session.arguments.values(u"exam"_s);
    exams.removeDuplicates();
    if (exams.isEmpty())
        throw UsageError(u"没有给出考试：请把名称写在成绩库后面，用逗号隔开，或用 --exam 给出。"_s);
    for (const QString& exam : exams) {
        if (!maintenance::isExamStored(session.scores.Conn, exam))
            throw UsageError(u"成绩库里没有考试“%1”。"_s.arg(exam));
    }
    return exams;
}

/// Those of the list that are named, as they would be selected on the screen.
QStringList selectedFrom(const QStringList& list, const QStringList& names)
{
    QStringList selected = list;
    selected.removeIf([&](const QString& entry) { return !names.contains(entry); });
    return selected;
}

} // namespace

Exit runDeleteSubjects(Session& session)
{
    if (session.arguments.has(u"yes"_s)) {
        session.dialogs.answer(u"确实要删除以下科目吗"_s, runtime::Answer::Ok);
        session.dialogs.answer(u"要删除的科目还写在"_s, u"仍然删除"_s);
    }
    if (!session.openLibrary())
        return Exit::Error;
    SubjectRemoval removal(session.scores);
    const QStringList names = namesOf(session);
    for (const QString& name : names) {
        if (!removal.columns().contains(name))
            throw UsageError(u"成绩库里没有科目“%1”。"_s.arg(name));
    }
    CliProgress progress;
    const SubjectRemoval::Result result = removal.run(selectedFrom(removal.columns(), names),
                                                      progress, chosenBackup(session.arguments));
    return result == SubjectRemoval::Result::Done ? session.result() : Exit::Error;
}

Exit runDeleteExams(Session& session)
{
    if (session.arguments.has(u"yes"_s))
        session.dialogs.answer(u"确实要删除以下考试吗"_s, runtime::Answer::Ok);
    if (!session.openLibrary())
        return Exit::Error;
    const QStringList names = namesOf(session);
    session.requireExams(names);
    maintenance::removeExams(session.scores,
                             selectedFrom(session.scores.catalogue.ExamList, names));
    return session.dialogs.cancelled() ? Exit::Error : session.result();
}

Exit runRemoveExams(Session& session)
{
    if (session.arguments.has(u"yes"_s))
        session.dialogs.answer(u"要彻底删除这些考试吗"_s, u"彻底删除"_s);
    if (!session.openLibrary())
        return Exit::Error;
    using maintenance::ExamErasure;
    CliProgress progress;
    const ExamErasure::Result result =
        ExamErasure(session.scores)
            .run(storedExams(session), progress, chosenBackup(session.arguments));
    return result == ExamErasure::Result::Done ? session.result() : Exit::Error;
}

} // namespace cli
