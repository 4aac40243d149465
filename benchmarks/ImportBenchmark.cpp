// A workbook of 3,000 students and 9 subjects, given by its path, imported as a new exam into a
// library of 40 exams: reading the file, matching the students, judging the scores, writing. Median
// of five fresh copies.

#include <algorithm>
#include <cstdio>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "benchmarks/Support.h"
#include "import/ExamImport.h"
#include "library/NewLibrary.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int earlierExams = 40;
constexpr int rounds = 5;

/// Enters 150 for every subject and closes the list of bad scores.
class QuickAnswers : public importing::ImportQuestions
{
public:
    void fullMarks(importing::ImportState& state, const QString&) override
    {
        for (importing::ImportSubject& subject : state.KMImport)
            subject.KMFull = 150;
    }
    void errorList(importing::ImportState&) override {}
};

struct Student
{
    double classNumber;
    double number;
    QString name;
};

std::vector<Student> studentsOf(const excel::Worksheet& sheet)
{
    std::vector<Student> students;
    for (int row = 2; row <= sheet.lastUsedRow(); ++row)
        students.push_back({runtime::Val(sheet.Cells(row, 1)), runtime::Val(sheet.Cells(row, 2)),
                            sheet.Cells(row, 3).text()});
    return students;
}

QStringList subjectsOf(const excel::Worksheet& sheet)
{
    QStringList subjects;
    for (int column = 4; column <= sheet.lastUsedColumn(); ++column)
        subjects.append(sheet.Cells(1, column).text());
    return subjects;
}

void addStudents(database::Connection& connection, const std::vector<Student>& students)
{
    database::Statement& insert = connection.prepared(
        u"insert into 信息表(班级,学号,姓名,科类,类别代码) values(?,?,?,'理',1)"_s);
    for (const Student& student : students) {
        insert.bind({student.classNumber, student.number, student.name});
        insert.step();
    }
}

void addExam(database::Connection& connection, int number, const QStringList& subjects)
{
    const QString exam = u"第%1次考试"_s.arg(number);
    database::Statement& row =
        connection.prepared(u"insert into 考试名称表(考试名称,科类,考试编号) values(?,'理',?)"_s);
    row.bind({exam, number});
    row.step();
    database::Statement& scores = connection.prepared(
        u"insert into 成绩表(id,班级,学号,姓名,类别代码,科类,考试名称,考试编号,%1) "
        "select ID,班级,学号,姓名,类别代码,科类,?,?,%2 from 信息表 order by ID"_s.arg(
            subjects.join(u','), QStringList(subjects.size(), u"100"_s).join(u',')));
    scores.bind({exam, number});
    scores.step();
}

void fillLibrary(library::ScoreLibrary& scores, const excel::Worksheet& sheet)
{
    const QStringList subjects = subjectsOf(sheet);
    library::NewLibrary(scores).create(subjects + QStringList{u"总分"_s});
    database::WriteBatch batch(scores.Conn);
    scores.Conn.Execute(u"delete * from 总分公式"_s);
    scores.Conn.Execute(u"insert into 总分公式(总分,公式) values('总分','"_s + subjects.join(u'+')
                        + u"')"_s);
    addStudents(scores.Conn, studentsOf(sheet));
    for (int exam = 1; exam <= earlierExams; ++exam)
        addExam(scores.Conn, exam, subjects);
    batch.commit();
}

/// From the file to the committed scores; below 0 if not every row arrived.
double importOnce(library::ScoreLibrary& scores, const QString& workbook)
{
    importing::Applications applications;
    importing::WorkbookIntake intake(applications, importing::examSheet);
    importing::ImportState state;
    QuickAnswers questions;
    runtime::NoProgress progress;
    QElapsedTimer timer;
    timer.start();
    intake.browse(workbook);
    importing::ExamImportRequest request;
    request.workbookPath = workbook;
    request.sheetName = intake.sheetNames().value(0);
    request.examName = u"待导入"_s;
    request.backup = importing::Backup::SwitchedOff;
    importing::ExamImport(scores, intake, state, questions, progress).run(request);
    const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
    database::Recordset rows;
    rows.Open(u"select * from 成绩表 where 考试名称='待导入' and id>0"_s, scores.Conn);
    return rows.RecordCount() == state.MFGData.Rows() - 1 && rows.RecordCount() > 0 ? milliseconds
                                                                                    : -1;
}

} // namespace

int main(int count, char* arguments[])
{
    if (count != 2) {
        std::fprintf(stderr, "usage: bench_import WORKBOOK.xlsx\n");
        return 2;
    }
    benchmark::PrintedDialogs dialogs;
    const QString workbook = QString::fromLocal8Bit(arguments[1]);
    const runtime::AppPaths paths = benchmark::programPaths(arguments[0]);
    const QTemporaryDir folder;
    library::ScoreLibrary scores(paths);
    excel::Application application;
    scores.LibPath = folder.filePath(u"原样.CJK"_s);
    fillLibrary(scores, application.Workbooks().Open(workbook).Worksheets().Item(1));
    const QString original = scores.LibPath;
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        scores.LibPath = folder.filePath(u"副本%1.CJK"_s.arg(round));
        QFile::copy(original, scores.LibPath);
        scores.OpenDB();
        times.push_back(importOnce(scores, workbook));
    }
    std::sort(times.begin(), times.end());
    if (times.front() < 0) {
        std::fprintf(stderr, "rows are missing\n");
        return 2;
    }
    const double median = times[rounds / 2];
    std::printf("%-60s %.1f ms\n", "import of a workbook as a new exam", median);
    return 0;
}
