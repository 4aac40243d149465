#include "library/CopyDifferences.h"

#include <algorithm>
#include <utility>

#include "library/CopyContent.h"
#include "library/LibraryShape.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/Statement.h"
#include "platform/database/UntouchedFile.h"
#include "platform/runtime/Numbers.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

/// What only one of two lists has; names are compared as the engine does.
QStringList missingIn(const QStringList& names, const QStringList& others)
{
    QStringList missing = names;
    missing.removeIf(
        [&](const QString& name) { return others.contains(name, Qt::CaseInsensitive); });
    return missing;
}

void sortByStudent(ExamContent& exam)
{
    std::stable_sort(exam.rows.begin(), exam.rows.end(),
                     [](const auto& a, const auto& b) { return a.student < b.student; });
}

/// Compares the rows of a student in both.
void addRow(ExamDifference& difference, const ExamContent& now, const ExamContent::Row& row,
            const ExamContent& before, const ExamContent::Row& formerRow, size_t subjects)
{
    qint64 scores = 0;
    for (size_t i = 0; i < subjects; ++i)
        scores += now.scores[row.firstScore + i] != before.scores[formerRow.firstScore + i];
    difference.scores += scores;
    difference.otherRows += scores == 0 && row.rest != formerRow.rest;
}

ExamDifference examDifference(const QString& name, ExamContent& now, ExamContent& before,
                              size_t subjects)
{
    ExamDifference difference{.exam = name,
                              .isDescribedOtherwise = now.description != before.description};
    sortByStudent(now);
    sortByStudent(before);
    auto row = now.rows.cbegin();
    auto former = before.rows.cbegin();
    while (row != now.rows.cend() && former != before.rows.cend()) {
        if (row->student < former->student) {
            ++difference.rowsAdded;
            ++row;
        } else if (former->student < row->student) {
            ++difference.rowsGone;
            ++former;
        } else {
            addRow(difference, now, *row++, before, *former++, subjects);
        }
    }
    difference.rowsAdded += now.rows.cend() - row;
    difference.rowsGone += before.rows.cend() - former;
    return difference;
}

void compareExams(CopyDifferences& found, LibraryContent& now, LibraryContent& before,
                  size_t subjects)
{
    for (auto& [name, exam] : now.exams) {
        const auto former = before.exams.find(name);
        if (former == before.exams.end()) {
            found.examsAdded.append(name);
            continue;
        }
        ExamDifference difference = examDifference(name, exam, former->second, subjects);
        if (difference.any())
            found.examsChanged.push_back(std::move(difference));
    }
    for (const auto& [name, exam] : before.exams) {
        if (!now.exams.contains(name))
            found.examsGone.append(name);
    }
}

StudentLabel labelOf(const StudentContent& student)
{
    return {student.classNumber, student.number, student.name};
}

void compareStudent(CopyDifferences& found, const StudentContent& now, const StudentContent& before)
{
    const StudentDifference difference{labelOf(now), labelOf(before)};
    if (now.place != before.place)
        found.studentsMoved.push_back(difference);
    if (now.nameMark != before.nameMark)
        found.studentsRenamed.push_back(difference);
    if (now.rest != before.rest)
        found.studentsChanged.push_back(difference);
}

void compareStudents(CopyDifferences& found, const LibraryContent& now,
                     const LibraryContent& before)
{
    for (const auto& [id, student] : now.students) {
        const auto former = before.students.find(id);
        if (former == before.students.end())
            found.studentsAdded.push_back(labelOf(student));
        else
            compareStudent(found, student, former->second);
    }
    for (const auto& [id, student] : before.students) {
        if (!now.students.contains(id))
            found.studentsGone.push_back(labelOf(student));
    }
}

/// What a table is for a user.
QString calledTable(const QString& table)
{
    static const QHash<QString, QString> names{{u"教师表"_s, u"教师名单"_s},
                                               {u"总分公式"_s, u"总分设置"_s},
                                               {u"设置表"_s, u"分析设置"_s},
                                               {u"详细设置表"_s, u"各科条件"_s},
                                               {u"自定义显示表"_s, u"自定义显示"_s},
                                               {u"颜色表"_s, u"分析图的颜色"_s},
                                               {u"分班表"_s, u"分班表"_s}};
    return names.value(table, u"表“%1”"_s.arg(table));
}

void compareTables(CopyDifferences& found, const LibraryContent& now, const LibraryContent& before)
{
    QStringList different;
    for (const auto& [table, sum] : now.tables) {
        const auto former = before.tables.find(table);
        if (former == before.tables.end() || former->second != sum)
            different.append(table);
    }
    for (const auto& [table, sum] : before.tables) {
        if (!now.tables.contains(table))
            different.append(table);
    }
    for (const QString& table : different)
        found.others.append(calledTable(table));
}

/// Takes what differs in an exam for the import's. False if nothing does.
bool moveExam(const QString& exam, SplitDifferences& split)
{
    if (split.others.examsAdded.removeOne(exam)) {
        split.ofImport.examsAdded.append(exam);
        return true;
    }
    std::vector<ExamDifference>& others = split.others.examsChanged;
    const auto found = std::find_if(others.begin(), others.end(),
                                    [&](const ExamDifference& each) { return each.exam == exam; });
    if (found == others.end())
        return false;
    split.ofImport.examsChanged.push_back(*found);
    others.erase(found);
    return true;
}

/// So many rows of scores, about, as a bar of progress has to count.
int rowsOf(database::Connection& library)
{
    database::Statement rows(library, u"select max(rowid) from 成绩表"_s);
    return rows.step() ? int(rows.integer(0)) : 0;
}

} // namespace

QString StudentLabel::text() const
{
    return u"%1 班 %2 号 %3"_s.arg(runtime::doubleText(classNumber), runtime::doubleText(number),
                                   name);
}

bool CopyDifferences::any() const
{
    return !examsAdded.isEmpty() || !examsGone.isEmpty() || !examsChanged.empty()
           || !studentsAdded.empty() || !studentsGone.empty() || !studentsMoved.empty()
           || !studentsRenamed.empty() || !studentsChanged.empty() || !subjectsAdded.isEmpty()
           || !subjectsGone.isEmpty() || !others.isEmpty();
}

std::optional<CopyDifferences> compareWithCopy(database::Connection& library, const QString& copy,
                                               runtime::Progress& progress)
{
    const database::UntouchedFile copied(copy);
    database::Connection former;
    copied.open(former, libraryShape());
    const database::ReadBatch reading(library);
    const database::ReadBatch readingFormer(former);
    const int total = rowsOf(library) + rowsOf(former);
    int done = 0;
    const auto tell = [&](int rows) {
        progress.report(u"比较备份..."_s, done + rows, total);
        return !progress.cancelled();
    };
    const CommonColumns columns = commonColumns(library, former);
    LibraryContent now = readContent(library, columns, tell);
    done = rowsOf(library);
    LibraryContent before = readContent(former, columns, tell);
    if (progress.cancelled())
        return std::nullopt;
    CopyDifferences found;
    found.subjectsAdded = missingIn(subjectsOf(library), subjectsOf(former));
    found.subjectsGone = missingIn(subjectsOf(former), subjectsOf(library));
    compareExams(found, now, before, size_t(columns.scores.size()));
    compareStudents(found, now, before);
    compareTables(found, now, before);
    return found;
}

SplitDifferences splitByImport(const CopyDifferences& differences, const Occasion& import)
{
    SplitDifferences split{.ofImport = {}, .others = differences};
    std::swap(split.ofImport.studentsAdded, split.others.studentsAdded);
    if (import.kind != Occasion::Kind::ExamImport)
        return split;
    // Names that differ are put right by an import, too.
    std::swap(split.ofImport.studentsRenamed, split.others.studentsRenamed);
    for (const QString& name : import.examNames()) {
        if (moveExam(name, split))
            break;
    }
    return split;
}

} // namespace library
