#include "import/preview/ExamPreview.h"

#include <algorithm>
#include <memory>

#include <QFileInfo>

#include "import/ExamSheet.h"
#include "import/preview/ColumnFit.h"
#include "import/preview/ExamComparison.h"
#include "import/preview/PreviewMarks.h"
#include "import/preview/RowsByNumber.h"
#include "import/preview/SettledNames.h"
#include "import/preview/SheetEntry.h"
#include "platform/database/ReadBatch.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/OneLine.h"
#include "platform/runtime/Phase.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

/// Whether the column has no room for the score.
bool isRefused(const ScoreCell& cell, const database::Column* column)
{
    return column != nullptr && !fitInto(*column, storedScore(cell.text)).refusal.isEmpty();
}

/// What becomes of a name that does not end the import.
QString otherNameRemark(NameAnswer answer)
{
    if (answer == NameAnswer::Replace)
        return u"全部考试里都改成表里的姓名。"_s;
    if (answer == NameAnswer::Keep)
        return u"成绩库的名单不变。"_s;
    return u"导入时会询问：选“是”，全部考试里都改成表里的姓名；选“否”，成绩库的名单不变。"_s;
}

/// Goes through a sheet of exam results as the import does, and notes what it finds.
class Previewer
{
public:
    Previewer(library::ScoreLibrary& scoreLibrary, const ExamSheet& sheet,
              const ExamPreviewRequest& request);

    Preview run();

private:
    void takeStreams();
    void takeSheetStream();
    void takeAskedStream(double classNumber);
    void judgeExam();
    void judgeTyped(const QStringList& streams);
    void judgePicked(const QStringList& streams);
    void tellOverwritten();
    QStringList streamsOfExam() const;
    QString namedStreams(const QStringList& streams) const;
    void takeRows();
    void takeRow(int row);
    void takeStudent(int row, const SheetStudent& student, const KnownStudents::Student* known);
    QString settledName(const SheetStudent& student, const QString& libraryName) const;
    void tellOtherName(int row, const SheetStudent& student, const QString& libraryName);
    QString stopRemark(int row);
    void tellUnknown(int row, const SheetStudent& student);
    QString nameFault(const QString& name) const;
    void judgeScores(int row);
    QString whatIsBad(const ScoreCell& cell, const ImportSubject& subject) const;
    QString whatIsRefused(const ScoreCell& cell, const ImportSubject& subject) const;
    QString faultWords(const ScoreCell& cell, const ImportSubject& subject) const;
    void takeTargets();
    QString becomesOfTwice(const RowsByNumber::Number& number) const;
    void tellTwice();
    void tellStop();

    library::ScoreLibrary& m_library;
    const ExamPreviewRequest& m_request;
    const QString& m_exam;
    const excel::Worksheet& m_sheet;
    const std::vector<ImportSubject>& m_found;
    /// Their columns; null for one that 成绩表 lacks.
    std::vector<const database::Column*> m_columns;
    const SheetRows m_rows;
    ClassAnswers m_classes;
    KnownStudents m_students;
    ExamFindings m_findings;
    ScoreCells m_cells;
    ScoreTarget m_target = ScoreTarget::NewRows;
    /// Nothing if it will be asked and nothing tells it yet.
    std::optional<QString> m_stream = QString();
    /// New classes whose stream will be asked.
    std::vector<double> m_askedClasses;
    std::optional<PreviewMarks> m_marks;
    std::unique_ptr<ExamComparison> m_comparison;
    RowsByNumber m_rowsOf;
    SettledNames m_names;
    /// The row whose name ends the import; 0 if none does.
    int m_stopRow = 0;
    Preview m_preview;
};

Previewer::Previewer(library::ScoreLibrary& scoreLibrary, const ExamSheet& sheet,
                     const ExamPreviewRequest& request)
    : m_library(scoreLibrary),
      m_request(request),
      m_exam(request.import.examName),
      m_sheet(*sheet.sheet),
      m_found(sheet.subjects),
      m_rows(m_sheet),
      m_classes(scoreLibrary),
      m_students(scoreLibrary.Conn),
      m_findings(scoreLibrary, m_classes, m_students)
{
    const database::TableColumns& columns = scoreLibrary.Conn.columns(u"成绩表"_s);
    for (const ImportSubject& subject : m_found) {
        const int column = columns.find(subject.KMName);
        m_columns.push_back(column < 0 ? nullptr : &columns.at(column));
    }
}

Preview Previewer::run()
{
    takeStreams();
    takeSheetStream();
    m_preview.title = u"考试“%1”，%2，数据表“%3”"_s.arg(
        m_exam, m_stream ? namedStream(*m_stream) : u"科类待定"_s, m_sheet.Name());
    judgeExam();
    m_marks.emplace(m_library, m_request, m_stream.value_or(QString()), m_found);
    m_preview.notes.append(m_marks->note());
    takeRows();
    takeTargets();
    tellTwice();
    if (m_comparison && m_stopRow == 0)
        m_comparison->tell(m_stream, m_preview);
    tellStop();
    tellRowsLeft(m_sheet, m_rows.rowsLeft(m_found), m_rows.whyItEnds() + u"，导入到此为止。"_s,
                 m_preview);
    return std::move(m_preview);
}

void Previewer::takeStreams()
{
    const std::vector<double> empty = m_findings.classesWithoutStudents(m_rows);
    const QString stream = m_findings.streamOfNewClasses(m_request.import.streamOfNewClasses);
    m_classes.giveStream(empty, stream);
    if (stream.isEmpty())
        m_askedClasses = empty;
    for (const double classNumber : empty)
        m_preview.add({PreviewKind::NewClass,
                       0,
                       runtime::doubleText(classNumber),
                       {},
                       {},
                       u"科类"_s,
                       {},
                       stream,
                       stream.isEmpty() ? u"成绩库里没有这个班的学生，导入时会询问科类。"_s
                                        : u"成绩库里没有这个班的学生。"_s});
}

/// The class of the first row stands for the whole sheet.
void Previewer::takeSheetStream()
{
    const Value first = m_sheet.Cells(SheetRows::First, 1);
    if (m_rows.end() == SheetRows::First)
        m_preview.notes.append(u"表里没有学生，第 %1 行没有学号。"_s.arg(SheetRows::First));
    else if (std::find(m_askedClasses.begin(), m_askedClasses.end(), runtime::Val(first))
             != m_askedClasses.end())
        takeAskedStream(runtime::Val(first));
    else if (m_classes.knowsStreamOf(first))
        m_stream = m_classes.streamOf(first).text();
    else
        m_preview.notes.append(
            u"第一名学生的班级“%1”不是成绩库里的班级，读不出考试的科类，请先改成班级的数字。"_s.arg(
                runtime::headOnOneLine(first.text())));
}

void Previewer::takeAskedStream(double classNumber)
{
    const bool isPicked = m_request.import.examChoice == ExamChoice::PickedFromList;
    const QStringList streams = streamsOfExam();
    QString text = u"第一名学生的班级 %1 还没有学生，它的科类导入时会询问；"_s.arg(
        runtime::doubleText(classNumber));
    m_stream = std::nullopt;
    if (isPicked && streams.size() == 1) {
        m_stream = streams[0];
        text += u"这里先当作和成绩库里的这次考试一样（%1）。"_s.arg(namedStream(streams[0]));
    } else if (isPicked) {
        text += u"谁不在表中、满分和总分公式写到哪一行，要看科类，这里没有列出。"_s;
    } else {
        text += u"考试的科类到那时才定。"_s;
    }
    m_preview.notes.append(text);
}

/// The sheet's, where the exam has it, and all of the exam's otherwise.
QString Previewer::namedStreams(const QStringList& streams) const
{
    if (streams.isEmpty() || (m_stream && streams.contains(*m_stream)))
        return namedStream(m_stream.value_or(QString()));
    QStringList names;
    for (const QString& stream : streams)
        names.append(namedStream(stream));
    names.removeDuplicates();
    return names.join(u'、');
}

QStringList Previewer::streamsOfExam() const
{
    database::Statement& rows = m_library.Conn.prepared(
        u"select 科类 from 考试名称表 where 考试名称=? order by 考试编号, rowid"_s);
    rows.bind({m_exam});
    QStringList streams;
    while (rows.step())
        streams.append(rows.text(0));
    return streams;
}

void Previewer::judgeExam()
{
    const QStringList streams = streamsOfExam();
    if (m_request.import.examChoice == ExamChoice::PickedFromList)
        return judgePicked(streams);
    if (const QString why = m_findings.whyUnlisted(m_exam); !why.isEmpty())
        m_preview.notes.append(QString(why).remove(u'\n'));
    if (!streams.isEmpty())
        judgeTyped(streams);
}

void Previewer::judgeTyped(const QStringList& streams)
{
    const std::vector<int> repeated = m_findings.repeatedRows(m_rows, m_exam);
    for (const int row : repeated)
        m_preview.add(sheetEntry(PreviewKind::Repeated, m_sheet, row,
                                 u"这次考试里已有他的成绩，导入后有两条。"_s));
    const bool isThere = !m_stream || streams.contains(*m_stream);
    if (!isThere && repeated.empty()) {
        m_preview.notes.append(
            u"考试“%1”已有别的科类，这张表作为%2加入。"_s.arg(m_exam, namedStream(*m_stream)));
        return;
    }
    m_preview.warning =
        u"成绩库里已经有考试“%1”（%2）！名称是输入的，导入会再添一套成绩，原有的成绩不变，"
        "其中 %3 人会有两套成绩。要改写原有的成绩，请先在考试名称的列表里选择它。"_s.arg(
            m_exam, namedStreams(streams), QString::number(repeated.size()));
}

void Previewer::judgePicked(const QStringList& streams)
{
    const std::vector<ExamFindings::Overwritten> lost = m_findings.overwrittenRows(m_rows, m_exam);
    const QString wrongRow = m_stream ? m_findings.wrongExamRow(m_exam, *m_stream) : QString();
    const bool isAsked = !lost.empty() || !wrongRow.isEmpty();
    m_target =
        isAsked ? m_request.overwritten.value_or(ScoreTarget::ExamRows) : ScoreTarget::FirstRows;
    m_comparison = std::make_unique<ExamComparison>(m_library, m_sheet, m_exam, m_target, m_found);
    m_preview.warning = u"考试“%1”已经在成绩库里（%2）！导入会用表里的成绩改写原有的成绩。"_s.arg(
        m_exam, namedStreams(streams));
    if (isAsked && !m_request.overwritten)
        m_preview.warning += u"导入时会询问“按原规则导入”还是“只更新本考试”，"
                             "下面的改动是只更新本考试的。"_s;
    if (m_request.overwritten == ScoreTarget::ExamRows)
        return;
    if (!wrongRow.isEmpty())
        m_preview.notes.append(u"按原规则导入，"_s + wrongRow);
    for (const ExamFindings::Overwritten& one : lost) {
        PreviewEntry entry = sheetEntry(PreviewKind::OtherExam, m_sheet, one.sheetRow,
                                        u"按原规则导入会改写他在这次考试的成绩。"_s);
        entry.before = one.exam;
        entry.after = m_exam;
        m_preview.add(std::move(entry));
    }
}

void Previewer::takeRows()
{
    m_preview.rows = m_rows.end() - SheetRows::First;
    for (int row = SheetRows::First; row < m_rows.end(); ++row)
        takeRow(row);
}

void Previewer::takeRow(int row)
{
    const SheetStudent student = studentIn(m_sheet, row);
    const KnownStudents::Student* known = m_students.find(student.classNumber, student.number);
    m_rowsOf.add({student.classNumber, student.number}, row);
    if (m_comparison && !m_comparison->canLookUp(student.name))
        m_preview.add(sheetEntry(PreviewKind::BadCell, m_sheet, row,
                                 u"姓名里有单引号，按原规则找不到他的成绩，这一行不会存入。"_s));
    takeStudent(row, student, known);
    judgeScores(row);
}

void Previewer::takeStudent(int row, const SheetStudent& student,
                            const KnownStudents::Student* known)
{
    if (known == nullptr) {
        tellUnknown(row, student);
        known = m_students.find(student.classNumber, student.number);
    } else if (const QString name = settledName(student, known->name); name != student.name) {
        tellOtherName(row, student, name);
    } else if (known->id != 0) {
        ++m_preview.matched;
    }
    m_names.add(student, known->name);
}

/// The name that the import finds once it has gone through the rows above.
QString Previewer::settledName(const SheetStudent& student, const QString& libraryName) const
{
    const bool isRenamed =
        m_request.names == NameAnswer::Ask || m_request.names == NameAnswer::Replace;
    return isRenamed ? m_names.nameOf(student).value_or(libraryName) : libraryName;
}

void Previewer::tellOtherName(int row, const SheetStudent& student, const QString& libraryName)
{
    const bool isAsked = m_request.names == NameAnswer::Ask;
    const bool mayBeKept = isAsked || m_request.names == NameAnswer::Keep;
    PreviewEntry entry =
        sheetEntry(PreviewKind::OtherName, m_sheet, row, otherNameRemark(m_request.names));
    entry.before = libraryName;
    entry.after = student.name;
    if (isAsked && m_students.find(student.classNumber, student.number)->name != libraryName)
        entry.remark.prepend(u"前面的行选“是”以后，"_s);
    if (libraryName.isEmpty())
        entry.remark = u"成绩库里的这名学生没有姓名，导入不会给他加上。"_s;
    else if (m_request.names == NameAnswer::Cancel)
        entry.remark = stopRemark(row);
    else if (m_target == ScoreTarget::FirstRows && mayBeKept)
        entry.remark +=
            (isAsked ? u"选“否”时"_s : QString()) + u"按表里的姓名另找他的成绩，没有就新增一条。"_s;
    m_preview.add(std::move(entry));
}

QString Previewer::stopRemark(int row)
{
    if (m_stopRow > 0)
        return u"导入在第 %1 行就停下了，到不了这一行。"_s.arg(m_stopRow);
    m_stopRow = row;
    return u"导入会在这一行停下，什么成绩也不存入。"_s;
}

void Previewer::tellUnknown(int row, const SheetStudent& student)
{
    const bool isAdded = m_request.import.newStudents == NewStudents::Add && m_stopRow == 0;
    m_preview.add(isAdded ? sheetEntry(PreviewKind::NewStudent, m_sheet, row, u"会添加到成绩库。"_s)
                          : sheetEntry(PreviewKind::UnknownStudent, m_sheet, row,
                                       m_stopRow > 0
                                           ? stopRemark(row)
                                           : u"导入时会询问是否添加；不添加，成绩也会导入。"_s));
    const QString fault = nameFault(student.name);
    if (!fault.isEmpty()) {
        PreviewEntry entry = sheetEntry(PreviewKind::BadCell, m_sheet, row, fault);
        entry.subject = u"姓名"_s;
        entry.before = student.name;
        m_preview.add(std::move(entry));
    }
    // Further rows of the sheet find him.
    m_students.assume(student.classNumber, student.number,
                      fault.isEmpty() ? student.name : QString());
}

/// Why the library would not take the name of a new student; empty if it would.
QString Previewer::nameFault(const QString& name) const
{
    const database::TableColumns& columns = m_library.Conn.columns(u"信息表"_s);
    const database::Column& column = columns.at(columns.find(u"姓名"_s));
    return fitInto(column, name).refusal;
}

void Previewer::judgeScores(int row)
{
    size_t place = 0;
    for (const ImportSubject& subject : m_marks->subjects()) {
        const database::Column* column = m_columns[place++];
        const Value value = m_sheet.Cells(row, subject.KMColumn);
        const ScoreCell cell = m_cells.read(value, subject.KMFull);
        const bool isText = scoreReading(value) != ScoreReading::Score;
        const bool refused = isRefused(cell, column);
        const bool isBad = refused || !cell.fault.isEmpty();
        if (!isBad && !isText)
            continue;
        PreviewEntry entry =
            sheetEntry(isBad ? PreviewKind::BadCell : PreviewKind::TextCell, m_sheet, row,
                       refused ? whatIsRefused(cell, subject)
                       : isBad ? whatIsBad(cell, subject)
                               : u"既不是缺考也不是作弊，按这个数存入。"_s);
        entry.subject = subject.KMName;
        entry.before = value.text();
        if (!refused)
            entry.after = runtime::doubleText(storedScore(cell.text));
        m_preview.add(std::move(entry));
    }
}

/// "超过总分（默认的满分 150），导入时会列出来要求修改；不改就".
QString Previewer::faultWords(const ScoreCell& cell, const ImportSubject& subject) const
{
    QString text = cell.fault;
    if (cell.score > double(subject.KMFull))
        text += u"（%1）"_s.arg(m_marks->told(subject));
    return text + u"，导入时会列出来要求修改；不改就"_s;
}

QString Previewer::whatIsBad(const ScoreCell& cell, const ImportSubject& subject) const
{
    return faultWords(cell, subject) + u"按这个数存入"_s
           + (storedScore(cell.text) == storedScore(u"缺考"_s) ? u"，也就是缺考。"_s : u"。"_s);
}

QString Previewer::whatIsRefused(const ScoreCell& cell, const ImportSubject& subject) const
{
    return (cell.fault.isEmpty() ? u"这个数"_s : faultWords(cell, subject))
           + (m_comparison ? u"存不进去，原来的成绩不变。"_s : u"存不进去，没有这一科的成绩。"_s);
}

/// Finds the rows that are overwritten. Which name finds one is known only when all rows are.
void Previewer::takeTargets()
{
    if (!m_comparison)
        return;
    const bool isKept = m_request.names == NameAnswer::Keep;
    int row = SheetRows::First;
    for (const SheetStudent& student : m_rows.students()) {
        const auto* known = m_students.find(student.classNumber, student.number);
        m_comparison->take(
            row++,
            {student.classNumber, student.number, student.name, known == nullptr ? 0 : known->id},
            isKept ? RowName::OnTheSheet : m_names.rowNameOf(student));
    }
}

QString Previewer::becomesOfTwice(const RowsByNumber::Number& number) const
{
    if (m_stopRow > 0)
        return u"。"_s;
    if (!m_comparison)
        return u"，导入后有几条成绩。"_s;
    const QStringList names = m_names.namesOf(number);
    const auto stored = std::count_if(names.begin(), names.end(), [this](const QString& name) {
        return m_comparison->canLookUp(name);
    });
    return m_target == ScoreTarget::FirstRows && stored > 1
               ? u"，姓名不同，导入后会有 %1 条成绩。"_s.arg(stored)
               : u"，最后一行的成绩算数。"_s;
}

void Previewer::tellTwice()
{
    m_rowsOf.tellTwice(
        m_sheet, [this](const RowsByNumber::Number& number) { return becomesOfTwice(number); },
        m_preview);
}

void Previewer::tellStop()
{
    if (m_stopRow == 0)
        return;
    QString text = u"导入会在第 %1 行停下，那里的姓名与成绩库的不一致；"_s.arg(m_stopRow);
    const int added = m_preview.count(PreviewKind::NewStudent);
    text += added == 0 ? u"什么也不存入。"_s
                       : u"只添加前面的 %1 名新学生，什么成绩也不存入。"_s.arg(added);
    if (!m_preview.warning.isEmpty())
        text += u"如果不停下："_s + m_preview.warning;
    m_preview.warning = text;
}

} // namespace

std::optional<Preview> previewExam(library::ScoreLibrary& scoreLibrary,
                                   const WorkbookIntake& intake, const ExamPreviewRequest& request)
{
    const ExamImportRequest& import = request.import;
    if (!QFileInfo(import.workbookPath).isFile() || !intake.checkWorkbookOpen())
        return std::nullopt;
    ClassAnswers classes(scoreLibrary);
    KnownStudents students(scoreLibrary.Conn);
    if (!ImportGuards(scoreLibrary, classes, students).isUsableName(import.examName))
        return std::nullopt;
    const std::optional<ExamSheet> sheet =
        openExamSheet(intake, scoreLibrary.catalogue, import.sheetName);
    if (!sheet || sheet->subjects.empty())
        return std::nullopt;
    const runtime::Phase phase;
    const database::ReadBatch state(scoreLibrary.Conn);
    return Previewer(scoreLibrary, *sheet, request).run();
}

} // namespace importing
