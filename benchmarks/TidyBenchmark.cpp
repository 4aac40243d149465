// A workbook of 3,000 students and 40 columns in a school's own form: how it is read, and the sheet
// that is made of it, with the students of a library and without. Median of five.

#include <cstdio>

#include "benchmarks/Support.h"
#include "import/tidy/Tidy.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int students = 3000;
constexpr int studentsOfClass = 50;
constexpr int subjects = 12;
constexpr int columns = 40;
constexpr int rounds = 5;

QString subjectName(int number)
{
    return u"科目%1"_s.arg(QChar(u'甲' + number));
}

QString studentName(int number)
{
    return u"学生"_s + QChar(char16_t(0x4e00 + number));
}

int classOf(int student)
{
    return 1 + student / studentsOfClass;
}

tidy::Roster rosterOf(bool withStudents)
{
    QStringList names;
    for (int subject = 0; subject < subjects; ++subject)
        names.append(subjectName(subject));
    std::vector<tidy::RosterStudent> all;
    for (int student = 0; withStudents && student < students; ++student)
        all.push_back({300.0 + classOf(student), 1.0 + student % studentsOfClass,
                       studentName(student), u"理"_s});
    return {names, all};
}

void fillHeadings(excel::Worksheet& sheet, const QStringList& headings)
{
    sheet.setCell(1, 1, u"高三年级期中考试成绩"_s);
    int column = 0;
    for (const QString& heading : headings)
        sheet.setCell(2, ++column, heading);
    for (int subject = 0; subject < subjects; ++subject) {
        sheet.setCell(2, ++column, subjectName(subject));
        sheet.setCell(2, ++column, QString(subjectName(subject) + u"校名次"_s));
        sheet.setCell(2, ++column, QString(subjectName(subject) + u"班名次"_s));
    }
}

void fill(excel::Workbook& book)
{
    excel::Worksheet& sheet = book.addSheet(u"成绩"_s);
    const QStringList keys{u"班级"_s, u"学号"_s, u"姓名"_s, u"总分"_s};
    fillHeadings(sheet, keys);
    for (int student = 0; student < students; ++student) {
        const int row = student + 3;
        sheet.setCell(row, 1, u"高三(%1)班"_s.arg(classOf(student)));
        sheet.setCell(row, 2, 1 + student % studentsOfClass);
        sheet.setCell(row, 3, studentName(student));
        for (int column = int(keys.size()); column <= columns; ++column)
            sheet.setCell(row, column,
                          student % 97 == 0 ? runtime::Value(u"缺"_s)
                                            : runtime::Value(60.5 + column));
    }
}

void measure(const char* what, const tidy::Roster& roster, excel::Workbook& book,
             const tidy::Aliases& aliases)
{
    const tidy::Sources sources{aliases, roster};
    std::vector<double> proposing;
    std::vector<double> tidying;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        const tidy::Proposal proposal = tidy::propose(book, tidy::Goal::ExamScores, sources);
        proposing.push_back(benchmark::milliseconds(timer));
        timer.start();
        tidy::tidied(book, proposal, sources);
        tidying.push_back(benchmark::milliseconds(timer));
    }
    std::printf("proposal of 3,000 x 40, %-20s %8.1f ms\n", what, benchmark::median(proposing));
    std::printf("tidied workbook,        %-20s %8.1f ms\n", what, benchmark::median(tidying));
}

} // namespace

int main(int, char* arguments[])
{
    const tidy::Aliases aliases = tidy::Aliases::load(benchmark::programPaths(arguments[0]));
    excel::Workbook book(u"期中.xlsx"_s);
    fill(book);
    measure("with students", rosterOf(true), book, aliases);
    measure("without a library", rosterOf(false), book, aliases);
    return 0;
}
