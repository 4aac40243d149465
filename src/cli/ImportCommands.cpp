#include <QFileInfo>

#include "cli/ChosenOptions.h"
#include "cli/CliImportQuestions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "import/ExamImport.h"
#include "import/ReclassImport.h"
#include "import/StudentImport.h"
#include "import/WorkbookIntake.h"
#include "import/preview/ExamPreview.h"
#include "import/preview/PreviewJson.h"
#include "import/preview/StudentPreview.h"

namespace cli {

using namespace Qt::StringLiterals;
using namespace importing;
using runtime::Answer;

namespace {

/// The sheet that --sheet names, else the first. Throws UsageError if the workbook has no such
/// sheet; of a workbook that could not be opened the import itself says why.
QString chosenSheet(const WorkbookIntake& intake, const Arguments& arguments)
{
    const QStringList sheets = intake.sheetNames();
    QString wanted = arguments.value(u"sheet"_s, sheets.value(0));
    if (!sheets.isEmpty() && !sheets.contains(wanted))
        throw UsageError(u"工作簿里没有数据表“%1”。"_s.arg(wanted));
    return wanted;
}

void planMismatch(CliDialogs& dialogs, const Arguments& arguments)
{
    const QString mismatch =
        arguments.oneOf(u"on-mismatch"_s, {u"cancel"_s, u"replace"_s, u"keep"_s});
    dialogs.answer(u"与数据库中记录的不一致"_s, mismatch == "replace"_L1 ? Answer::Yes
                                                : mismatch == "keep"_L1  ? Answer::No
                                                                         : Answer::Cancel);
}

void planAnswers(CliDialogs& dialogs, const Arguments& arguments)
{
    planMismatch(dialogs, arguments);
    const QString unknown = arguments.oneOf(u"on-unknown"_s, {u"skip"_s, u"add"_s});
    dialogs.answer(u"是否添加新学生"_s, unknown == "add"_L1 ? Answer::Ok : Answer::Cancel);
    if (arguments.has(u"existing"_s))
        dialogs.answer(u"原有数据将被新数据替换"_s, Answer::Ok);
}

/// A question that ends an import unless a flag of its own was given.
struct Guard
{
    /// Part of the question's text.
    QString question;
    QString flag;
    /// What is said where the flag is missing.
    QString hint;
    /// The button that the flag presses.
    QString accepted = u"继续"_s;
};

/// What every question about the rows of an exam picked from the list says, whatever is at stake.
const QString overwriteQuestion = u"[只更新本考试]"_s;

const std::vector<Guard>& guards()
{
    static const std::vector<Guard> all{
        {u"还没有学生，科类设为："_s, u"stream"_s,
         u"请用 --stream 文 或 --stream 理 给出这些班级的科类。"_s},
        {overwriteQuestion, u"accept-overwrite"_s,
         u"请用 --accept-overwrite original（按原规则导入）或 "
         "--accept-overwrite this-exam（只更新本考试）。"_s,
         u"按原规则导入"_s},
        {u"人的成绩重复"_s, u"accept-duplicate"_s,
         u"确实要再次导入，请加上 --accept-duplicate。"_s},
        {u"考试列表里看不到它"_s, u"accept-unlisted"_s,
         u"确实要用这个名称，请加上 --accept-unlisted。"_s, u"仍然导入"_s},
        {u"既不是缺考也不是作弊"_s, u"accept-texts"_s,
         u"确实要这样导入，请加上 --accept-texts。"_s},
    };
    return all;
}

void planAccepted(CliDialogs& dialogs, const Arguments& arguments)
{
    const QString rows = arguments.oneOf(u"accept-overwrite"_s, {u"original"_s, u"this-exam"_s});
    for (const Guard& guard : guards()) {
        if (arguments.has(guard.flag))
            dialogs.answer(guard.question, guard.accepted);
    }
    // The last plan for a question is the one that counts.
    if (rows == "this-exam"_L1)
        dialogs.answer(overwriteQuestion, u"只更新本考试"_s);
}

/// Names the flag that would have answered the question which ended an import.
void printHints(const Session& session)
{
    const QString shown = session.dialogs.messages().join(u'\n');
    for (const Guard& guard : guards()) {
        if (shown.contains(guard.question) && !session.arguments.has(guard.flag))
            printError(guard.hint);
    }
}

/// The stream of classes without students. Throws UsageError for one that is neither 文 nor 理 nor
/// one of the open library, or a third one, or not the only one.
QString streamOfNewClasses(const Session& session)
{
    QString stream = session.arguments.value(u"stream"_s);
    QStringList known = session.scores.catalogue.Streams;
    known.removeAll(QString());
    if (known.isEmpty())
        known = QStringList{u"文"_s, u"理"_s};
    if (session.arguments.has(u"stream"_s) && !known.contains(stream))
        throw UsageError(u"科类“%1”不正确，可以是：%2。"_s.arg(stream, known.join(u'、')));
    return stream;
}

ExamImportRequest requestFrom(const Session& session, const QString& sheet)
{
    const Arguments& arguments = session.arguments;
    ExamImportRequest request;
    request.workbookPath = arguments.path(1);
    request.sheetName = sheet;
    request.examName = arguments.value(u"exam"_s);
    request.examChoice =
        arguments.has(u"existing"_s) ? ExamChoice::PickedFromList : ExamChoice::Typed;
    request.newStudents = arguments.has(u"add-students"_s) ? NewStudents::Add : NewStudents::Ask;
    request.afterwards = arguments.has(u"score"_s) ? Afterwards::Score : Afterwards::LeaveUnscored;
    request.backup = chosenBackup(arguments);
    request.streamOfNewClasses = streamOfNewClasses(session);
    return request;
}

/// The name of the exam. Throws UsageError for one that `--exam A,B` of other commands could not
/// name.
QString examName(const Arguments& arguments)
{
    if (!arguments.has(u"exam"_s))
        throw missingOption(u"exam"_s);
    QString name = arguments.value(u"exam"_s);
    if (name.contains(u',') || name != name.trimmed())
        throw UsageError(u"考试名称“%1”不能含有逗号，两端也不能有空格。"_s.arg(name));
    return name;
}

/// The import passes over a missing file in silence, which helps nobody here.
bool checkBook(Session& session)
{
    const QString path = session.arguments.path(1);
    if (QFileInfo(path).isFile())
        return true;
    printError(u"找不到工作簿：%1"_s.arg(path));
    return false;
}

Exit exitOf(const Session& session, ImportResult result)
{
    return result == ImportResult::Finished ? session.result() : Exit::Error;
}

/// Prints what an import would do; it stopped, after its message, if there is nothing.
Exit printPreview(const Session& session, const std::optional<Preview>& preview)
{
    if (!preview)
        return Exit::Error;
    printResult(QString::fromUtf8(previewJson(*preview)) + u'\n');
    return session.result();
}

/// What --accept-existing answers; without it the import stops. Throws UsageError.
TakenStudents takenStudents(const Arguments& arguments)
{
    if (!arguments.has(u"accept-existing"_s))
        return TakenStudents::Cancel;
    const QString answer = arguments.oneOf(u"accept-existing"_s, {u"skip"_s, u"add"_s});
    return answer == "skip"_L1 ? TakenStudents::Skip : TakenStudents::Add;
}

/// What --on-mismatch answers, as planMismatch plans it.
NameAnswer nameAnswer(const Arguments& arguments)
{
    const QString answer = arguments.value(u"on-mismatch"_s);
    return answer == "replace"_L1 ? NameAnswer::Replace
           : answer == "keep"_L1  ? NameAnswer::Keep
                                  : NameAnswer::Cancel;
}

/// The answers of the command line that change what an import would do. Throws UsageError.
ExamPreviewRequest previewRequest(const Session& session, const CliImportQuestions& questions,
                                  const QString& sheet)
{
    ExamPreviewRequest request{.import = requestFrom(session, sheet),
                               .fullMarks = questions.givenMarks(),
                               .names = nameAnswer(session.arguments)};
    const Arguments& arguments = session.arguments;
    if (arguments.value(u"on-unknown"_s) == "add"_L1)
        request.import.newStudents = NewStudents::Add;
    if (arguments.has(u"accept-overwrite"_s))
        request.overwritten = arguments.value(u"accept-overwrite"_s) == "this-exam"_L1
                                  ? ScoreTarget::ExamRows
                                  : ScoreTarget::FirstRows;
    return request;
}

} // namespace

Exit runImportStudents(Session& session)
{
    const Arguments& arguments = session.arguments;
    const TakenStudents taken = takenStudents(arguments);
    if (taken != TakenStudents::Cancel)
        session.dialogs.answer(u"的班级和学号在"_s,
                               taken == TakenStudents::Skip ? u"跳过已有"_s : u"全部添加"_s);
    if (!session.openLibrary() || !checkBook(session))
        return Exit::Error;
    Applications applications;
    WorkbookIntake intake(applications, studentSheet);
    intake.browse(arguments.path(1));
    const QString sheet = chosenSheet(intake, arguments);
    if (arguments.has(u"preview"_s))
        return printPreview(session, previewStudents(session.scores, intake, sheet, taken));
    CliProgress progress;
    StudentImport import(session.scores, intake, progress);
    const ImportResult result = import.run(sheet, chosenBackup(arguments));
    if (session.dialogs.cancelled())
        printError(
            u"什么也没有导入。请用 --accept-existing skip 跳过已有的人，或用 add 全部添加。"_s);
    return exitOf(session, result);
}

Exit runImportExam(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString exam = examName(arguments);
    CliImportQuestions questions(session.scores.paths(), arguments.list(u"full-marks"_s));
    planAnswers(session.dialogs, arguments);
    planAccepted(session.dialogs, arguments);
    if (!session.openLibrary() || !checkBook(session))
        return Exit::Error;
    if (arguments.has(u"existing"_s))
        session.requireExams({exam});
    Applications applications;
    WorkbookIntake intake(applications, examSheet);
    intake.browse(arguments.path(1));
    const QString sheet = chosenSheet(intake, arguments);
    if (arguments.has(u"preview"_s))
        return printPreview(session, previewExam(session.scores, intake,
                                                 previewRequest(session, questions, sheet)));
    ImportState state;
    CliProgress progress;
    ExamImport import(session.scores, intake, state, questions, progress);
    const ImportResult result = import.run(requestFrom(session, sheet));
    if (result == ImportResult::Stopped)
        printHints(session);
    return exitOf(session, result);
}

/// The box with the counts is answered by the command itself: whoever gives it wants the run.
Exit runReclass(Session& session)
{
    const Arguments& arguments = session.arguments;
    planMismatch(session.dialogs, arguments);
    const QString missing = arguments.oneOf(u"on-missing"_s, {u"keep"_s, u"delete"_s});
    session.dialogs.answer(u"分班表中没有下列学生的信息"_s,
                           missing == "delete"_L1 ? Answer::Ok : Answer::Cancel);
    session.dialogs.answer(u"移到新班级和新学号"_s, u"继续"_s);
    if (!session.openLibrary() || !checkBook(session))
        return Exit::Error;
    Applications applications;
    WorkbookIntake intake(applications, classChangeSheet);
    intake.browse(arguments.path(1));
    const QString sheet = chosenSheet(intake, arguments);
    CliProgress progress;
    ReclassImport import(session.scores, intake, progress);
    return exitOf(session, import.run(sheet, chosenBackup(arguments)));
}

} // namespace cli
