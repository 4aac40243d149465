// The preview of a sheet of 3,000 students and 12 subjects in a library of 40 exams: as a new exam,
// and over an exam that is there already, in which every fourth score changes; and the preview of
// 3,000 students. Medians of five.

#include <cstdio>

#include "benchmarks/Support.h"
#include "import/preview/ExamPreview.h"
#include "import/preview/PreviewTable.h"
#include "import/preview/StudentPreview.h"
#include "library/NewLibrary.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

constexpr int students = 3000;
constexpr int ofClass = 50;
constexpr int exams = 40;
constexpr int rounds = 5;
const QStringList subjects = {u"语文"_s, u"数学"_s, u"英语"_s, u"物理"_s, u"化学"_s, u"生物"_s,
                              u"政治"_s, u"历史"_s, u"地理"_s, u"信息"_s, u"体育"_s, u"音乐"_s};

QString examName(int number)
{
    return u"第%1次考试"_s.arg(number);
}

void fillLibrary(library::ScoreLibrary& scores)
{
    library::NewLibrary(scores).create(subjects);
    database::WriteBatch batch(scores.Conn);
    database::Statement& insert = scores.Conn.prepared(
        u"insert into 信息表(班级,学号,姓名,科类,类别代码) values(?,?,?,'理',1)"_s);
    for (int i = 0; i < students; ++i) {
        insert.bind({i / ofClass + 1, i % ofClass + 1, u"学生%1"_s.arg(i)});
        insert.step();
    }
    for (int exam = 1; exam <= exams; ++exam) {
        scores.Conn.Execute(
            u"insert into 考试名称表(考试名称,科类,考试编号,%1) values('%2','理',%3,%4)"_s.arg(
                subjects.join(u','), examName(exam), QString::number(exam),
                QStringList(subjects.size(), u"150"_s).join(u',')));
        scores.Conn.Execute(
            u"insert into 成绩表(id,班级,学号,姓名,类别代码,科类,考试名称,考试编号,%1) "
            "select ID,班级,学号,姓名,类别代码,科类,'%2',%3,%4 from 信息表 order by ID"_s.arg(
                subjects.join(u','), examName(exam), QString::number(exam),
                QStringList(subjects.size(), u"100"_s).join(u',')));
    }
    batch.commit();
    scores.readCatalogue();
}

void fillSheet(excel::Worksheet& sheet)
{
    const QStringList headings = QStringList{u"班级"_s, u"学号"_s, u"姓名"_s} + subjects;
    for (int column = 1; column <= int(headings.size()); ++column)
        sheet.setCell(1, column, headings[column - 1]);
    for (int i = 0; i < students; ++i) {
        sheet.setCell(i + 2, 1, i / ofClass + 1);
        sheet.setCell(i + 2, 2, i % ofClass + 1);
        sheet.setCell(i + 2, 3, u"学生%1"_s.arg(i));
        for (int column = 4; column <= int(headings.size()); ++column)
            sheet.setCell(i + 2, column, (i + column) % 4 == 0 ? 90.5 : 100.0);
    }
}

template <class Work> void measure(const char* what, Work&& work)
{
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(benchmark::milliseconds(timer));
    }
    std::printf("%-60s %.1f ms\n", what, benchmark::median(times));
}

} // namespace

int main(int, char* arguments[])
{
    benchmark::PrintedDialogs dialogs;
    const runtime::AppPaths paths = benchmark::programPaths(arguments[0]);
    const QTemporaryDir folder;
    library::ScoreLibrary scores(paths);
    scores.LibPath = folder.filePath(u"预览.CJK"_s);
    fillLibrary(scores);
    importing::Applications applications;
    applications.push_back(std::make_unique<excel::Application>());
    excel::Workbook& book = applications.back()->Workbooks().Add();
    fillSheet(book.Worksheets().Item(1));
    importing::WorkbookIntake exam(applications, importing::examSheet);
    importing::WorkbookIntake list(applications, importing::studentSheet);
    exam.use(*applications.back(), book, scores.LibPath);
    list.use(*applications.back(), book, scores.LibPath);
    importing::ExamPreviewRequest request;
    request.import.workbookPath = scores.LibPath;
    request.import.sheetName = book.Worksheets().Item(1).Name();
    request.import.examName = u"待导入"_s;
    importing::Preview preview;
    measure("preview of a new exam", [&] { preview = previewExam(scores, exam, request).value(); });
    request.import.examName = examName(exams);
    request.import.examChoice = importing::ExamChoice::PickedFromList;
    measure("preview over an exam that is there",
            [&] { preview = previewExam(scores, exam, request).value(); });
    std::printf("%d scores change, %d stay\n", preview.count(importing::PreviewKind::Changed),
                preview.unchanged);
    measure("its table", [&] { const importing::PreviewTable table(preview); });
    measure("preview of a student list",
            [&] { (void)previewStudents(scores, list, request.import.sheetName); });
    return 0;
}
