#include "import/tidy/BookReading.h"

#include <algorithm>
#include <map>

#include <QSet>

#include "import/tidy/Questions.h"
#include "platform/runtime/Numbers.h"

namespace tidy {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

QString sheetName(const QString& stream, qsizetype streams)
{
    if (streams < 2)
        return u"成绩"_s;
    if (stream.isEmpty())
        return u"科类不明"_s;
    return stream == u"文"_s || stream == u"理"_s ? stream + u'科' : stream;
}

/// The students of a class, and how many of them stand on no sheet with a certain column.
struct ClassGap
{
    int students = 0;
    int missing = 0;
};

using ClassGaps = std::map<double, ClassGap>;

/// Whole classes whose sheets lack a column: "2班（10 人）、3班（45 人）"; empty if there are none.
QString wholeClasses(const ClassGaps& gaps)
{
    constexpr int mostNamed = 5;
    QStringList named;
    int classes = 0;
    for (const auto& [number, gap] : gaps) {
        if (gap.missing == gap.students && ++classes <= mostNamed)
            named.append(
                u"%1班（%2 人）"_s.arg(runtime::doubleText(number), QString::number(gap.missing)));
    }
    const QString all = named.join(u'、');
    return classes > mostNamed ? u"%1等 %2 个班"_s.arg(all, QString::number(classes)) : all;
}

int missingBesideOthers(const ClassGaps& gaps)
{
    int missing = 0;
    for (const auto& [number, gap] : gaps)
        missing += gap.missing < gap.students ? gap.missing : 0;
    return missing;
}

/// A row of scores that are nobody's.
StudentRow nobody(const SourceRow& row)
{
    StudentRow student{row, 0, 0, {}};
    student.remarks.push_back(
        {.kind = RemarkKind::NotFound, .row = row.row, .text = row.whyNobody, .isLeftOut = true});
    return student;
}

} // namespace

BookReading::BookReading(excel::Workbook& book, Proposal& proposal, const Sources& sources)
    : m_proposal(proposal),
      m_sources(sources),
      m_words(proposal.goal, sources),
      m_marks(proposal.marks, sources.aliases)
{
    m_proposal.remarks.clear();
    m_proposal.remarksNotKept = 0;
    m_proposal.warnings = sources.aliases.complaints();
    m_proposal.counts = {};
    m_proposal.results.clear();
    readSheets(book);
    readClasses();
    noteLostDigits();
    findStudents();
    countScores();
    noteMissingColumns();
    noteRemarks();
    countStudents();
    m_proposal.questions =
        openQuestions({m_proposal, sources.roster, m_sheets, m_students, m_joinQuestions});
}

void BookReading::readSheets(excel::Workbook& book)
{
    const std::vector<const excel::Worksheet*> sheets = std::as_const(book).sheets();
    m_proposal.sheets.resize(sheets.size());
    int number = 0;
    for (const excel::Worksheet* sheet : sheets) {
        m_proposal.sheets[size_t(number)].name = sheet->Name();
        m_sheets.emplace_back(*sheet, number++, m_proposal, m_words, m_sources.aliases);
    }
    leaveDoubtfulSheets();
    for (const SheetReading& sheet : m_sheets)
        m_proposal.warnings += sheet.warnings();
    m_proposal.warnings.removeDuplicates();
}

/// Homework or seats beside the marks would be asked about, column by column. A student who stands
/// there alone may have his marks there.
void BookReading::leaveDoubtfulSheets()
{
    QSet<QString> names;
    for (const SheetReading& sheet : m_sheets) {
        if (!sheet.hasPlainScores())
            continue;
        for (const SourceRow& row : sheet.rows())
            names.insert(withoutBlanks(row.name));
    }
    for (SheetReading& sheet : m_sheets) {
        const auto isElsewhere = [&](const SourceRow& row) {
            return !row.name.isEmpty() && names.contains(withoutBlanks(row.name));
        };
        if (sheet.isDoubtful()
            && std::all_of(sheet.rows().begin(), sheet.rows().end(), isElsewhere))
            sheet.leaveDoubtful();
    }
}

void BookReading::readClasses()
{
    ClassReadings readings(m_proposal.classes, m_sources.roster);
    for (const SheetReading& sheet : m_sheets) {
        for (const SourceRow& row : sheet.rows()) {
            if (row.whyNobody.isEmpty())
                readings.count(row.classText, sheet.grade());
        }
    }
    readings.settle();
    m_proposal.classes = readings.readings();
    const StudentSearch search(m_proposal.goal, m_sources.roster);
    for (const SheetReading& sheet : m_sheets) {
        for (const SourceRow& row : sheet.rows())
            m_students.push_back(row.whyNobody.isEmpty() ? search.find(
                                     row, readings.numberOf(row.classText, sheet.grade()))
                                                         : nobody(row));
    }
}

void BookReading::noteLostDigits()
{
    for (StudentRow& student : m_students) {
        const SheetReading& sheet = m_sheets[size_t(student.source.sheet)];
        for (const ColumnProposal& column : sheet.proposal().columns) {
            if (column.use.field == Field::Leave || column.use.field == Field::Subject
                || !hasLostDigits(sheet.view().value(student.source.row, column.column)))
                continue;
            student.remarks.push_back(
                {.kind = RemarkKind::LostDigits,
                 .row = student.source.row,
                 .text = u"“%1”是 16 位以上的数字，后面几位已经丢失。"_s.arg(column.heading)});
        }
    }
}

void BookReading::findStudents()
{
    SheetJoin join(m_proposal.goal, m_sheets);
    for (StudentRow& student : m_students) {
        if (student.isWhole)
            join.add(student);
    }
    m_joinQuestions = join.questions();
    m_proposal.warnings += join.warnings();
    makeSheets(join);
    noteEmptyColumns();
}

QString BookReading::streamOf(const ResultRow& row) const
{
    QString known = m_sources.roster.streamOf(row.student->classNumber);
    if (!known.isEmpty())
        return known;
    const SourceRow& source = *row.parts.front();
    const SheetReading& sheet = m_sheets[size_t(source.sheet)];
    const int column = sheet.proposal().columnOf(Field::Stream);
    QString written = column > 0 ? streamIn(sheet.view().text(source.row, column)) : QString();
    return written == u"文"_s || written == u"理"_s ? written : QString();
}

/// In the order of their first rows.
QStringList BookReading::streamsOf(const std::vector<ResultRow>& rows) const
{
    QStringList streams;
    for (const ResultRow& row : rows) {
        const QString stream = streamOf(row);
        if (!streams.contains(stream))
            streams.append(stream);
    }
    return streams;
}

/// An exam's import takes one stream from a sheet.
void BookReading::makeSheets(const SheetJoin& join)
{
    if (m_proposal.goal == Goal::StudentList) {
        m_result.push_back({u"学生名单"_s, join.rows()});
        findColumns(m_result.back());
        return;
    }
    QStringList streams = streamsOf(join.rows());
    const qsizetype known = streams.size() - streams.count(QString());
    if (known < 2)
        streams = QStringList{QString()};
    for (const QString& stream : std::as_const(streams))
        m_result.push_back({sheetName(stream, known), {}});
    for (const ResultRow& row : join.rows()) {
        const qsizetype place = known < 2 ? 0 : streams.indexOf(streamOf(row));
        m_result[size_t(place)].rows.push_back(row);
    }
    for (ResultSheet& sheet : m_result)
        findColumns(sheet);
}

QStringList BookReading::possibleColumns() const
{
    return m_proposal.goal == Goal::ExamScores ? m_sources.roster.subjects()
                                               : QStringList{u"科类"_s} + Roster::studentColumns();
}

void BookReading::findColumns(ResultSheet& sheet)
{
    for (const QString& column : possibleColumns()) {
        const bool isThere =
            std::any_of(sheet.rows.begin(), sheet.rows.end(), [&](const ResultRow& row) {
                return !contentOf(row, column, m_sheets).isNull();
            });
        if (isThere)
            sheet.columns.append(column);
    }
}

/// A column that nobody has anything in is not written.
void BookReading::noteEmptyColumns()
{
    QStringList empty;
    for (const QString& column : possibleColumns()) {
        const bool isWritten =
            std::any_of(m_result.begin(), m_result.end(), [&](const ResultSheet& sheet) {
                return sheet.rows.empty() || sheet.columns.contains(column);
            });
        const bool isTaken =
            std::any_of(m_sheets.begin(), m_sheets.end(), [&](const SheetReading& sheet) {
                return sheet.proposal().taking == Taking::Take && sheet.columnNamed(column) > 0
                       && !sheet.lacksResults();
            });
        if (isTaken && !isWritten)
            empty.append(u"“%1”"_s.arg(column));
    }
    if (!empty.isEmpty())
        m_proposal.warnings.append(u"%1没有内容，没有写进整理好的表。"_s.arg(empty.join(u'、')));
}

bool BookReading::isOnAllSheets(const QString& subject) const
{
    return std::all_of(m_sheets.begin(), m_sheets.end(), [&](const SheetReading& sheet) {
        return sheet.rows().empty() || sheet.columnNamed(subject) > 0;
    });
}

bool BookReading::hasColumn(const ResultRow& row, const QString& subject) const
{
    return std::any_of(row.parts.begin(), row.parts.end(), [&](const SourceRow* part) {
        return m_sheets[size_t(part->sheet)].columnNamed(subject) > 0;
    });
}

/// Who stands on no sheet with a column of the subject counts as absent, as if his cell were blank.
void BookReading::noteMissingColumn(const ResultSheet& sheet, const QString& subject)
{
    ClassGaps gaps;
    for (const ResultRow& row : sheet.rows) {
        ClassGap& gap = gaps[row.student->classNumber];
        ++gap.students;
        gap.missing += hasColumn(row, subject) ? 0 : 1;
    }
    const MarkUse use = m_useOf.value(QString());
    const QString becomes = use == MarkUse::AsItStands ? u"不填"_s : u'按' + markUseText(use);
    const QString classes = wholeClasses(gaps);
    if (!classes.isEmpty())
        m_proposal.warnings.append(
            u"%1没有“%2”一列，这些学生的“%2”%3。"_s.arg(classes, subject, becomes));
    if (const int missing = missingBesideOthers(gaps); missing > 0)
        m_proposal.warnings.append(u"有 %1 名学生不在有“%2”一列的数据表里，他们的“%2”%3。"_s.arg(
            QString::number(missing), subject, becomes));
}

void BookReading::noteMissingColumns()
{
    if (m_proposal.goal == Goal::StudentList)
        return;
    for (const ResultSheet& sheet : m_result) {
        for (const QString& subject : sheet.columns) {
            if (!isOnAllSheets(subject))
                noteMissingColumn(sheet, subject);
        }
    }
}

void BookReading::countScores()
{
    if (m_proposal.goal == Goal::ExamScores) {
        for (const ResultSheet& sheet : m_result) {
            for (const ResultRow& row : sheet.rows) {
                for (const QString& subject : sheet.columns)
                    countScore(row, subject);
            }
        }
    }
    m_proposal.marks = m_marks.marks();
    for (const Mark& mark : m_proposal.marks) {
        m_useOf.insert(mark.text, mark.use);
        m_proposal.counts.absent += mark.use == MarkUse::Absent ? mark.count : 0;
        m_proposal.counts.cheated += mark.use == MarkUse::Cheated ? mark.count : 0;
    }
}

void BookReading::countScore(const ResultRow& row, const QString& subject)
{
    const ScoreCell score = scoreIn(contentOf(row, subject, m_sheets));
    if (score.kind == ScoreCell::Kind::Mark)
        m_marks.count(score.text);
    else if (score.kind == ScoreCell::Kind::Odd)
        keep({.kind = RemarkKind::OddScore,
              .row = row.student->source.row,
              .text = u"%1的%2“%3”不只是数字，照原样保留。"_s.arg(row.student->name, subject,
                                                                  score.text)},
             row.student->source.sheet);
}

void BookReading::keep(const Remark& remark, int sheet)
{
    if (m_proposal.remarks.size() >= size_t(Proposal::mostRemarks)) {
        ++m_proposal.remarksNotKept;
        return;
    }
    m_proposal.remarks.push_back(remark);
    m_proposal.remarks.back().sheet = m_sheets[size_t(sheet)].proposal().name;
}

void BookReading::noteRemarks()
{
    int lostDigits = 0;
    for (const StudentRow& student : m_students) {
        for (const Remark& remark : student.remarks) {
            lostDigits += remark.kind == RemarkKind::LostDigits ? 1 : 0;
            keep(remark, student.source.sheet);
        }
    }
    if (lostDigits > 0)
        m_proposal.warnings.append(
            u"有 %1 个号码是 16 位以上的数字，电子表格只保留 15 位，后面几位已经丢失。"
            "请在原来的表里把这一列设为文本，重新填写号码。"_s.arg(lostDigits));
}

void BookReading::countStudents()
{
    Counts& counts = m_proposal.counts;
    for (const SheetProposal& sheet : m_proposal.sheets)
        counts.sheets += sheet.taking == Taking::Take ? 1 : 0;
    for (const ResultSheet& sheet : m_result) {
        counts.students += int(sheet.rows.size());
        m_proposal.results.push_back({sheet.name, int(sheet.rows.size())});
    }
    for (const StudentRow& student : m_students) {
        const bool isSomebody = student.source.whyNobody.isEmpty();
        counts.leftOut += isSomebody && !student.isWhole ? 1 : 0;
        counts.nobody += isSomebody ? 0 : 1;
        counts.found += student.isFound ? 1 : 0;
        counts.known += student.isKnown && !student.isFound ? 1 : 0;
        counts.unknown += student.isWhole && !student.isKnown ? 1 : 0;
        m_proposal.sheets[size_t(student.source.sheet)].students += student.isWhole ? 1 : 0;
    }
}

std::vector<const StudentRow*> BookReading::leftOut() const
{
    std::vector<const StudentRow*> rows;
    for (const StudentRow& student : m_students) {
        if (!student.isWhole)
            rows.push_back(&student);
    }
    return rows;
}

std::vector<FilledCell> BookReading::sourceCells(const SourceRow& row) const
{
    return m_sheets[size_t(row.sheet)].view().cells(row.row);
}

Value BookReading::scoreCell(const Value& cell) const
{
    const ScoreCell score = scoreIn(cell);
    if (score.kind == ScoreCell::Kind::Number)
        return score.number;
    if (score.kind == ScoreCell::Kind::Odd)
        return score.text;
    switch (m_useOf.value(score.text, MarkUse::AsItStands)) {
    case MarkUse::Absent:
        return u"缺考"_s;
    case MarkUse::Cheated:
        return u"作弊"_s;
    case MarkUse::AsItStands:
        break;
    }
    if (score.number < 0)
        return score.number;
    return score.text.isEmpty() ? Value() : Value(cell.text());
}

/// Numbers that name somebody keep their digits as a text.
Value BookReading::studentCell(const Value& cell, const QString& column) const
{
    if (column == u"科类"_s)
        return streamIn(cell.text());
    const bool isKey = column == u"学籍号"_s || column == u"身份证"_s;
    return isKey && !cell.isNull() ? Value(cellText(cell)) : cell;
}

Value BookReading::cell(const ResultRow& row, const QString& column) const
{
    const Value content = contentOf(row, column, m_sheets);
    return m_proposal.goal == Goal::ExamScores ? scoreCell(content) : studentCell(content, column);
}

} // namespace tidy
