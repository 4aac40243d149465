#include <algorithm>

#include <QFileInfo>
#include <QJsonDocument>

#include "cli/ChosenOptions.h"
#include "cli/Command.h"
#include "import/tidy/Choices.h"
#include "import/tidy/ClassNames.h"
#include "import/tidy/ProposalJson.h"
#include "import/tidy/Tidy.h"
#include "oldlibraries/FileHeader.h"
#include "workbooks/model/CellRange.h"
#include "workbooks/readers/Reader.h"

namespace cli {

using namespace Qt::StringLiterals;
using tidy::ClassFrom;
using tidy::ColumnUse;
using tidy::Goal;
using tidy::Proposal;

namespace {

constexpr int mostPrinted = 20;

/// The two sides of a value such as 学号=座号. Throws UsageError.
struct Pair
{
    Pair(const QString& option, const QString& text, const QString& form)
    {
        const qsizetype equals = text.lastIndexOf(u'=');
        if (equals < 0)
            throw UsageError(u"选项 --%1 的值应为 %2：%3"_s.arg(option, form, text));
        left = text.left(equals).trimmed();
        right = text.mid(equals + 1).trimmed();
    }

    QString left;
    QString right;
};

/// Throws UsageError for a name that no column can be taken for.
ColumnUse useNamed(const QString& name, Goal goal, const tidy::Roster& roster)
{
    const std::vector<ColumnUse> uses = tidy::possibleUses(goal, roster);
    QStringList texts;
    for (const ColumnUse& use : uses) {
        if (use.text() == name)
            return use;
        texts.append(use.text());
    }
    throw UsageError(
        u"选项 --map 里的“%1”不是可以导入的项目，可以是：%2。"_s.arg(name, texts.join(u'、')));
}

/// True if a column is the one that --map names by its letters or its heading.
bool isNamed(const tidy::ColumnProposal& column, const QString& name)
{
    return excel::columnName(column.column) == name
           || (!column.heading.isEmpty() && tidy::folded(column.heading) == tidy::folded(name));
}

/// Throws UsageError if no sheet has that column.
void mapColumn(Proposal& proposal, const ColumnUse& use, const QString& name)
{
    bool isThere = false;
    for (int sheet = 0; sheet < int(proposal.sheets.size()); ++sheet) {
        const std::vector<tidy::ColumnProposal> columns = proposal.sheets[size_t(sheet)].columns;
        const auto found =
            std::find_if(columns.begin(), columns.end(),
                         [&](const tidy::ColumnProposal& column) { return isNamed(column, name); });
        if (found == columns.end())
            continue;
        tidy::chooseColumn(proposal, sheet, found->column, use);
        isThere = true;
    }
    if (!isThere)
        throw UsageError(u"工作簿里没有“%1”这一列。"_s.arg(name));
}

/// Where else than in a column the class can stand.
std::optional<ClassFrom> classPlace(const QString& name)
{
    if (name == u"标题"_s)
        return ClassFrom::TitleRows;
    if (name == u"表名"_s)
        return ClassFrom::SheetName;
    if (name == u"文件名"_s)
        return ClassFrom::FileName;
    return std::nullopt;
}

void takeMaps(Proposal& proposal, const Arguments& arguments, const tidy::Roster& roster)
{
    for (const QString& text : arguments.values(u"map"_s)) {
        const Pair pair(u"map"_s, text, u"项目=列"_s);
        const ColumnUse use = useNamed(pair.left, proposal.goal, roster);
        const std::optional<ClassFrom> place = classPlace(pair.right);
        if (use.field != tidy::Field::Class || !place) {
            mapColumn(proposal, use, pair.right);
            continue;
        }
        for (int sheet = 0; sheet < int(proposal.sheets.size()); ++sheet)
            tidy::chooseClassSource(proposal, sheet, *place);
    }
}

void takeSheets(Proposal& proposal, const Arguments& arguments)
{
    const QStringList wanted = arguments.list(u"sheets"_s);
    QStringList known;
    for (int sheet = 0; sheet < int(proposal.sheets.size()); ++sheet) {
        known.append(proposal.sheets[size_t(sheet)].name);
        if (arguments.has(u"sheets"_s))
            tidy::chooseSheet(proposal, sheet,
                              wanted.contains(known.last()) ? tidy::Taking::Take
                                                            : tidy::Taking::LeaveOut);
    }
    for (const QString& name : wanted) {
        if (!known.contains(name))
            throw UsageError(u"工作簿里没有数据表“%1”。"_s.arg(name));
    }
}

/// "有：a、b 等。" of what there is for an option; says that there is nothing where it is empty.
QString offered(const QStringList& texts)
{
    constexpr int mostOffered = 10;
    if (texts.isEmpty())
        return u"没有可以指定的。"_s;
    return u"可以是：%1%2。"_s.arg(texts.mid(0, mostOffered).join(u'、'),
                                   texts.size() > mostOffered ? u" 等"_s : QString());
}

/// Throws UsageError for a word that is no use.
tidy::MarkUse markUse(const Pair& pair, const QString& text)
{
    for (const auto use :
         {tidy::MarkUse::Absent, tidy::MarkUse::Cheated, tidy::MarkUse::AsItStands}) {
        if (tidy::markUseText(use) == pair.right)
            return use;
    }
    throw UsageError(u"选项 --mark 的值应为 文字=缺考|作弊|不变：%1"_s.arg(text));
}

/// What stands for empty cells where marks are named.
const QString blankMark = u"（空白）"_s;

/// Marks are compared without blanks. Throws UsageError for one that does not occur.
void takeMarks(Proposal& proposal, const Arguments& arguments)
{
    const std::vector<tidy::Mark> marks = proposal.marks;
    const auto plain = [](const QString& text) {
        return tidy::withoutBlanks(tidy::halfWidth(text));
    };
    for (const QString& text : arguments.values(u"mark"_s)) {
        const Pair pair(u"mark"_s, text, u"文字=缺考|作弊|不变"_s);
        const tidy::MarkUse use = markUse(pair, text);
        bool isThere = false;
        QStringList texts;
        for (const tidy::Mark& mark : marks) {
            texts.append(mark.text.isEmpty() ? blankMark : mark.text);
            if (plain(mark.text) != plain(pair.left) && plain(texts.last()) != plain(pair.left))
                continue;
            tidy::chooseMark(proposal, mark.text, use);
            isThere = true;
        }
        if (!isThere)
            throw UsageError(
                u"选项 --mark 里的“%1”在成绩里没有出现，%2"_s.arg(pair.left, offered(texts)));
    }
}

/// Throws UsageError for a text that names no class here, and for a number that no class can have.
void takeClasses(Proposal& proposal, const Arguments& arguments)
{
    const std::vector<tidy::ClassReading> classes = proposal.classes;
    for (const QString& text : arguments.values(u"class"_s)) {
        const Pair pair(u"class"_s, text, u"文字=班号"_s);
        const std::optional<double> number = tidy::writtenClass(pair.right);
        if (!number)
            throw UsageError(
                u"选项 --class 的值应为 文字=班号，班号是 1 或更大的整数：%1"_s.arg(text));
        bool isThere = false;
        QStringList texts;
        for (const tidy::ClassReading& reading : classes) {
            texts.append(reading.text);
            if (tidy::folded(reading.text) != tidy::folded(pair.left))
                continue;
            tidy::chooseClass(proposal, reading.text, *number);
            isThere = true;
        }
        if (!isThere)
            throw UsageError(
                u"选项 --class 里的“%1”不是表里班级的写法，%2"_s.arg(pair.left, offered(texts)));
    }
}

/// Students and subjects of --library, else the shipped subjects; nothing after the message if the
/// library could not be opened. Throws UsageError, Error.
std::optional<tidy::Roster> chosenRoster(const Session& session, const tidy::Aliases& aliases)
{
    const Arguments& arguments = session.arguments;
    library::ScoreLibrary& scores = session.scores;
    if (!arguments.has(u"library"_s))
        return tidy::Roster::ofShippedSubjects(scores.paths());
    const QString path = QFileInfo(arguments.value(u"library"_s)).absoluteFilePath();
    if (oldlibraries::isOldLibrary(path))
        throw UsageError(u"%1 是旧格式的成绩库，请先用 yunshan-cli convert 转换。"_s.arg(path));
    scores.LibPath = path;
    scores.OpenDB();
    if (!scores.Conn.isOpen())
        return std::nullopt;
    return tidy::Roster::ofLibrary(scores, aliases);
}

/// Throws UsageError without a file that is needed, and for one that is no workbook by its name.
void checkTarget(const Arguments& arguments, const QString& format)
{
    const QString target = arguments.value(u"out"_s);
    if (target.isEmpty() && (arguments.has(u"out"_s) || format != "json"_L1))
        throw missingOption(u"out"_s);
    if (!target.isEmpty() && !target.endsWith(u".xlsx"_s, Qt::CaseInsensitive))
        throw UsageError(u"选项 --out 的文件只能是 .xlsx。"_s);
}

/// Knows the library that is open only after it was opened. Throws Error for a file that must not
/// be written.
QString chosenTarget(const Session& session)
{
    const Arguments& arguments = session.arguments;
    QString target = chosenFile(session, u"out"_s);
    const QFileInfo file(target);
    if (file.exists()
        && file.canonicalFilePath() == QFileInfo(arguments.path(0)).canonicalFilePath())
        throw runtime::Error(u"整理的结果不能写进原来的工作簿，请换一个文件名。"_s);
    return target;
}

void printTexts(const QStringList& texts, qsizetype all)
{
    for (const QString& text : texts.mid(0, mostPrinted))
        printError(text);
    if (all > mostPrinted)
        printError(u"同样的提示另有 %1 条，--format json 会全部列出。"_s.arg(all - mostPrinted));
}

void printProposal(const Proposal& proposal)
{
    for (const tidy::SheetProposal& sheet : proposal.sheets) {
        if (sheet.taking == tidy::Taking::LeaveOut)
            printError(u"没有用数据表“%1”：%2"_s.arg(sheet.name, sheet.reason));
    }
    for (const QString& warning : proposal.warnings)
        printError(warning);
    if (!proposal.isDecided())
        return;
    QStringList remarks;
    for (const tidy::Remark& remark : proposal.remarks)
        remarks.append(u"%1“%2”第 %3 行：%4"_s.arg(remark.isLeftOut ? u"没有写入，"_s : QString(),
                                                   remark.sheet, QString::number(remark.row),
                                                   remark.text));
    printTexts(remarks, remarks.size() + proposal.remarksNotKept);
}

void printQuestions(const Proposal& proposal)
{
    printError(u"还不能整理，请先确定："_s);
    for (const QString& question : proposal.questions)
        printError(question);
    printError(u"用 --map 项目=列 指定一列（列用字母或表头，不用的列写 不导入=列），班级也可以写 "
               "班级=标题、班级=表名 或 班级=文件名；用 --class 文字=班号 指定班级，"
               "--mark 文字=缺考 指定标记，--sheets 指定数据表。"_s);
}

void printCounts(const Session& session, const Proposal& proposal)
{
    const tidy::Counts& counts = proposal.counts;
    printError(u"整理了 %1 张数据表，%2 名学生；缺考 %3 处，作弊 %4 处。"_s.arg(
        QString::number(counts.sheets), QString::number(counts.students),
        QString::number(counts.absent), QString::number(counts.cheated)));
    if (counts.found > 0)
        printError(u"按考号、学籍号或班级和姓名找到 %1 人。"_s.arg(counts.found));
    if (session.arguments.has(u"library"_s) && counts.unknown > 0)
        printError(u"有 %1 人的班级和学号成绩库里没有。"_s.arg(counts.unknown));
    if (counts.leftOut > 0)
        printError(u"有 %1 行学生没有写入，列在数据表“%2”里。"_s.arg(
            QString::number(counts.leftOut), tidy::LeftOutSheet));
    if (counts.nobody > 0)
        printError(u"有 %1，没有写入，列在数据表“%2”里。"_s.arg(tidy::nobodyText(proposal),
                                                                tidy::LeftOutSheet));
    const QString results = tidy::resultsText(proposal);
    if (!results.isEmpty())
        printError(results);
}

/// The proposal with what the options decide. Throws UsageError.
Proposal chosenProposal(excel::Workbook& book, const Arguments& arguments,
                        const tidy::Sources& sources)
{
    const bool isExam = arguments.oneOf(u"as"_s, {u"exam"_s, u"students"_s}) == "exam"_L1;
    Proposal proposal = tidy::propose(book, isExam ? Goal::ExamScores : Goal::StudentList, sources);
    takeSheets(proposal, arguments);
    takeMaps(proposal, arguments, sources.roster);
    tidy::reconsider(proposal, book, sources);
    // The marks of a row count once it is known whose they are.
    if (arguments.has(u"class"_s)) {
        takeClasses(proposal, arguments);
        tidy::reconsider(proposal, book, sources);
    }
    if (arguments.has(u"mark"_s)) {
        takeMarks(proposal, arguments);
        tidy::reconsider(proposal, book, sources);
    }
    return proposal;
}

void print(const Proposal& proposal, const QString& format)
{
    if (format != "json"_L1) {
        printProposal(proposal);
        return;
    }
    const QJsonDocument json(tidy::proposalJson(proposal));
    printResult(QString::fromUtf8(json.toJson(QJsonDocument::Compact)) + u'\n');
}

} // namespace

Exit runTidy(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"paths"_s, u"json"_s});
    checkTarget(arguments, format);
    const QString source = arguments.path(0);
    if (!QFileInfo(source).isFile())
        throw runtime::Error(u"找不到工作簿：%1"_s.arg(source));
    const tidy::Aliases aliases = tidy::Aliases::load(session.scores.paths());
    const std::optional<tidy::Roster> roster = chosenRoster(session, aliases);
    if (!roster)
        return Exit::Error;
    const QString target = chosenTarget(session);
    const std::unique_ptr<excel::Workbook> book = excel::readWorkbook(source);
    const tidy::Sources sources{aliases, *roster};
    const Proposal proposal = chosenProposal(*book, arguments, sources);
    print(proposal, format);
    if (!proposal.isDecided()) {
        printQuestions(proposal);
        return Exit::Error;
    }
    if (!target.isEmpty())
        tidy::tidied(*book, proposal, sources)->SaveAs(target);
    printCounts(session, proposal);
    if (format != "json"_L1)
        printResult(target + u'\n');
    return session.result();
}

} // namespace cli
