// Individual analysis on the screen over a school of 12,000 students: opening it, and choosing
// another student, up to the painted chart, each the median of many. Exit code 1 if one misses its
// goal.

#include <cstdio>

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include "benchmarks/Support.h"
#include "individual/ui/FormGeRenChengJi.h"
#include "library/NewLibrary.h"
#include "library/StudentFinder.h"
#include "library/ui/StudentTreeView.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int Students = 12000;
constexpr int Subjects = 12;
constexpr int Rounds = 40;
constexpr double OpenGoalMs = 300;

QStringList subjectNames()
{
    QStringList names;
    for (int i = 1; i <= Subjects; ++i)
        names.append(u"科目%1"_s.arg(i));
    return names;
}

void addStudents(database::Connection& connection)
{
    const QString surnames = u"王李张刘陈杨赵黄周吴徐孙胡朱高林何郭马罗曾单"_s;
    const QString given = u"伟芳娜秀英敏静丽强磊军洋勇艳杰娟涛明超兰霞平刚桂"_s;
    database::Statement& student = connection.prepared(
        u"insert into 信息表(班级,学号,姓名,科类,类别代码) values(?,?,?,'理',1)"_s);
    for (int i = 0; i < Students; ++i) {
        const QString name = QString(surnames[i % surnames.size()]) + given[i / 7 % given.size()]
                             + given[i / 31 % given.size()];
        student.bind({i / 60 + 1, i % 60 + 1, name});
        student.run();
    }
}

void addExam(database::Connection& connection, int exam)
{
    QStringList columns;
    QStringList values;
    for (const QString& subject : subjectNames()) {
        columns += {subject, subject + u"年名"_s, subject + u"班名"_s};
        values += {u"ID*7%1500/10.0"_s, u"(ID*7+%1)%12000+1"_s.arg(exam * 911), u"ID%60+1"_s};
    }
    const QString name = u"考试%1"_s.arg(exam);
    connection.Execute(
        u"insert into 考试名称表(考试名称,科类,考试编号) values('%1','理',%2)"_s.arg(name).arg(
            exam));
    connection.Execute(
        u"insert into 成绩表(id,班级,学号,姓名,科类,类别代码,考试名称,考试编号,%1) select "
        "ID,班级,学号,姓名,科类,类别代码,'%2',%3,%4 from 信息表"_s.arg(
            columns.join(u','), name, QString::number(exam), values.join(u',')));
}

void fill(library::ScoreLibrary& scores, int exams)
{
    library::NewLibrary(scores).create(subjectNames());
    database::WriteBatch batch(scores.Conn);
    addStudents(scores.Conn);
    for (int exam = 1; exam <= exams; ++exam)
        addExam(scores.Conn, exam);
    batch.commit();
    scores.OpenDB();
}

int judge(const QString& what, std::vector<double> times, double goal)
{
    const double worst = *std::max_element(times.begin(), times.end());
    const double median = benchmark::median(std::move(times));
    std::printf("%-66s %.2f ms, worst %.2f ms (goal %.0f ms)\n", qUtf8Printable(what), median,
                worst, goal);
    return median <= goal ? 0 : 1;
}

class Screen
{
public:
    explicit Screen(library::ScoreLibrary& scores)
        : m_form(scores, m_dialogs, m_applications, nullptr)
    {
        m_form.resize(1200, 800);
        m_form.show();
        QApplication::processEvents();
    }

    void tickAll()
    {
        for (QCheckBox* box : m_form.findChildren<QCheckBox*>())
            box->setChecked(true);
    }

    void choose(int student)
    {
        auto* tree = m_form.findChild<library::StudentTreeView*>();
        tree->selectStudent(student);
        Q_EMIT tree->nodeChosen();
        QApplication::processEvents();
    }

private:
    widgets::ScreenDialogs m_dialogs;
    benchmark::PrintedDialogs m_printed;
    excel::Applications m_applications;
    individual::FormGeRenChengJi m_form;
};

int openScreen(library::ScoreLibrary& scores)
{
    std::vector<double> times;
    for (int round = 0; round < 5; ++round) {
        QElapsedTimer timer;
        timer.start();
        const Screen screen(scores);
        times.push_back(benchmark::milliseconds(timer));
    }
    return judge(u"open the screen of 12,000 students"_s, times, OpenGoalMs);
}

int chooseStudents(library::ScoreLibrary& scores, int exams, double goal)
{
    Screen screen(scores);
    screen.tickAll();
    screen.choose(0);
    std::vector<double> times;
    for (int round = 1; round <= Rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        screen.choose(round * 37);
        times.push_back(benchmark::milliseconds(timer));
    }
    return judge(u"choose a student with %1 exams, 12 columns ticked"_s.arg(exams), times, goal);
}

void findNobody(library::ScoreLibrary& scores)
{
    library::StudentFinder finder(library::readStudentTree(scores.Conn));
    for (const char* what : {"find nobody by pinyin among 12,000, the first time", "and again"}) {
        QElapsedTimer timer;
        timer.start();
        finder.next(u"zzzz"_s, -1);
        std::printf("%-66s %.1f ms\n", what, benchmark::milliseconds(timer));
    }
}

int run(const runtime::AppPaths& paths, int exams, double goal)
{
    const QTemporaryDir folder;
    library::ScoreLibrary scores(paths);
    scores.LibPath = folder.filePath(u"个人.CJK"_s);
    fill(scores, exams);
    const int opened = openScreen(scores);
    findNobody(scores);
    return opened | chooseStudents(scores, exams, goal);
}

} // namespace

int main(int count, char* arguments[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    const benchmark::PrintedDialogs dialogs;
    const runtime::AppPaths paths = benchmark::programPaths(arguments[0]);
    return run(paths, 12, 16) | run(paths, 60, 50);
}
