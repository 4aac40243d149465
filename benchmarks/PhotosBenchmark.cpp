// Photos of 3,000 students, 100 KB each, set from a folder without the copy before, against a bare
// SQLite program that stores the same bytes in one transaction; and a library with these photos
// against one without: opening, browsing, scoring. Medians of five, in turns; exit code 1 if a goal
// is missed.

#include <cstdio>
#include <functional>
#include <memory>

#include <sqlite3.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "benchmarks/Support.h"
#include "library/NewLibrary.h"
#include "maintenance/MissingPhotos.h"
#include "maintenance/PhotoRun.h"
#include "maintenance/paint/PictureFiles.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"
#include "scoring/Scoring.h"
#include "workbench/Browse.h"
#include "workbench/Offers.h"
#include "workbench/ScoreQuery.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int students = 3000;
constexpr int studentsInClass = 50;
constexpr qsizetype photoBytes = 100 * 1024;
constexpr int rounds = 5;
const QString exam = u"期中"_s;
const QStringList subjects{u"语文"_s, u"数学"_s, u"英语"_s, u"总分"_s};

/// Passes over what a run tells at its end.
class PhotoDialogs : public benchmark::PrintedDialogs
{
public:
    runtime::Answer message(const QString& text, const QString& title, runtime::Buttons buttons,
                            runtime::Icon icon) override
    {
        return text.startsWith(u"设置"_s) ? runtime::Answer::Ok
                                          : PrintedDialogs::message(text, title, buttons, icon);
    }
};

int classOf(int student)
{
    return student / studentsInClass + 1;
}

int numberOf(int student)
{
    return student % studentsInClass + 1;
}

/// A JPEG file full of details, filled up to its size by a note ahead of the picture.
QByteArray photo()
{
    QImage noise(366, 488, QImage::Format_RGB32);
    quint32 random = 1;
    for (int y = 0; y < noise.height(); ++y) {
        for (int x = 0; x < noise.width(); ++x) {
            random = random * 1664525 + 1013904223;
            noise.setPixel(x, y, random >> 8);
        }
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    noise.save(&buffer, "JPEG", 70);
    const qsizetype missing = photoBytes - buffer.data().size() - 2;
    const QByteArray note = QByteArray("\xFF\xE4") + char(missing >> 8) + char(missing & 0xFF)
                            + QByteArray(missing - 2, 'x');
    return QByteArray(buffer.data()).insert(2, note);
}

bool makeFolder(const QString& folder)
{
    const QByteArray bytes = photo();
    bool isMade = bytes.size() == photoBytes;
    for (int student = 0; student < students; ++student) {
        const QString path = folder + u"/%1/"_s.arg(classOf(student));
        QDir().mkpath(path);
        QFile file(path + u"%1.jpg"_s.arg(numberOf(student)));
        isMade = isMade && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }
    return isMade;
}

void addStudents(database::Connection& connection)
{
    database::Statement& student = connection.prepared(
        u"insert into 信息表(ID,班级,学号,姓名,科类,类别代码) values(?,?,?,?,'理',1)"_s);
    database::Statement& scores = connection.prepared(
        u"insert into 成绩表(id,班级,学号,姓名,科类,类别代码,考试名称,考试编号,语文,数学,英语) "
        "values(?,?,?,?,'理',1,?,1,?,?,?)"_s);
    for (int i = 0; i < students; ++i) {
        const QString name = u"学生%1"_s.arg(i);
        student.bind({i + 1, classOf(i), numberOf(i), name});
        student.run();
        scores.bind({i + 1, classOf(i), numberOf(i), name, exam, 50 + i * 7 % 100,
                     50 + i * 11 % 100, 50 + i * 13 % 100});
        scores.run();
    }
}

void makeLibrary(const runtime::AppPaths& paths, const QString& path)
{
    library::ScoreLibrary scores(paths);
    scores.LibPath = path;
    library::NewLibrary(scores).create(subjects);
    database::WriteBatch batch(scores.Conn);
    addStudents(scores.Conn);
    scores.Conn.Execute(u"insert into 考试名称表(考试名称,科类,考试编号,语文,数学,英语,总分) "
                        "values('期中','理',1,150,150,150,'语文+数学+英语')"_s);
    batch.commit();
}

/// False if a student has no photo afterwards.
bool setPhotos(const runtime::AppPaths& paths, const QString& library, const QString& folder)
{
    library::ScoreLibrary scores(paths);
    scores.LibPath = library;
    scores.OpenDB();
    runtime::NoProgress progress;
    const maintenance::PictureFiles files;
    return maintenance::PhotoRun(scores, files, progress).run(folder, library::Backup::SwitchedOff)
           && maintenance::studentsWithoutPhoto(scores.Conn).empty();
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The bare program: reads each file and stores it, in one transaction.
bool storeBare(const QString& library, const QString& folder)
{
    sqlite3* db = nullptr;
    sqlite3_stmt* update = nullptr;
    bool isDone = sqlite3_open(library.toUtf8().constData(), &db) == SQLITE_OK
                  && sqlite3_exec(db, "pragma synchronous=full; begin", nullptr, nullptr, nullptr)
                         == SQLITE_OK
                  && sqlite3_prepare_v2(db, "update 信息表 set 照片=?, 照片名=? where ID=?", -1,
                                        &update, nullptr)
                         == SQLITE_OK;
    for (int student = 0; isDone && student < students; ++student) {
        const QByteArray name = QByteArray::number(numberOf(student)) + ".jpg";
        const QByteArray bytes =
            bytesOf(folder + u"/%1/"_s.arg(classOf(student)) + QString::fromUtf8(name));
        sqlite3_bind_blob64(update, 1, bytes.constData(), sqlite3_uint64(bytes.size()),
                            SQLITE_STATIC);
        sqlite3_bind_text(update, 2, name.constData(), int(name.size()), SQLITE_STATIC);
        sqlite3_bind_int(update, 3, student + 1);
        isDone = sqlite3_step(update) == SQLITE_DONE && sqlite3_reset(update) == SQLITE_OK;
    }
    sqlite3_finalize(update);
    isDone = sqlite3_exec(db, "commit", nullptr, nullptr, nullptr) == SQLITE_OK && isDone;
    sqlite3_close(db);
    return isDone;
}

/// Prints the ratio; 1 if the goal is missed.
int judged(const char* what, double ours, double bound, double goal)
{
    std::printf("%-46s %8.1f ms, %8.1f ms, ratio %.2f (goal %.2f)\n", what, ours, bound,
                ours / bound, goal);
    return ours <= goal * bound ? 0 : 1;
}

/// Medians of what both take, in turns.
int compare(const char* what, double goal, const std::function<void()>& ours,
            const std::function<void()>& bound)
{
    std::vector<double> times[2];
    for (int round = 0; round < rounds; ++round) {
        for (const int which : {0, 1}) {
            QElapsedTimer timer;
            timer.start();
            (which == 0 ? ours : bound)();
            times[which].push_back(benchmark::milliseconds(timer));
        }
    }
    return judged(what, benchmark::median(times[0]), benchmark::median(times[1]), goal);
}

int compareStoring(const runtime::AppPaths& paths, const QDir& folder)
{
    const QString empty = folder.filePath(u"空.CJK"_s);
    const QString photos = folder.filePath(u"照片"_s);
    std::vector<double> times[2];
    bool isDone = true;
    for (int round = 0; round < rounds; ++round) {
        for (const int which : {0, 1}) {
            const QString path = folder.filePath(which == 0 ? u"有照片.CJK"_s : u"比较.CJK"_s);
            QFile::remove(path);
            QFile::copy(empty, path);
            QElapsedTimer timer;
            timer.start();
            isDone =
                (which == 0 ? setPhotos(paths, path, photos) : storeBare(path, photos)) && isDone;
            times[which].push_back(benchmark::milliseconds(timer));
        }
    }
    constexpr double goal = 2;
    constexpr double goalOfMemory = 100;
    const double peak = benchmark::peakMemory();
    std::printf("peak memory %.1f MB (goal %.0f MB)\n", peak, goalOfMemory);
    return judged("3,000 photos of 100 KB, bare SQLite", benchmark::median(times[0]),
                  benchmark::median(times[1]), goal)
           | (isDone && peak < goalOfMemory ? 0 : 1);
}

/// An open library, and what is done with it.
class OpenLibrary
{
public:
    OpenLibrary(const runtime::AppPaths& paths, const QString& path) : m_scores(paths)
    {
        m_scores.LibPath = path;
        m_scores.OpenDB();
    }

    void open()
    {
        m_scores.OpenDB();
        workbench::classes(m_scores.catalogue);
        workbench::sortColumns(m_scores);
        workbench::categories(m_scores);
    }
    void browse()
    {
        const QString sql = workbench::rowsSql({m_scores.catalogue.ExamList,
                                                workbench::classes(m_scores.catalogue),
                                                workbench::categories(m_scores),
                                                {}});
        grid::FlexGrid grid;
        workbench::ShowKSCJmain(m_scores, sql, {u"班级"_s, u"学号"_s, u"姓名"_s, u"总分"_s}, grid,
                                m_progress);
    }
    void score()
    {
        m_scores.Conn.Execute(u"update 成绩表 set 总分=NULL"_s);
        scoring::Scoring(m_scores).score(exam, m_progress);
    }

private:
    library::ScoreLibrary m_scores;
    runtime::NoProgress m_progress;
};

int compareUse(const runtime::AppPaths& paths, const QDir& folder)
{
    OpenLibrary with(paths, folder.filePath(u"有照片.CJK"_s));
    OpenLibrary without(paths, folder.filePath(u"空.CJK"_s));
    constexpr double goal = 1.5;
    return compare(
               "opening, with and without photos", goal, [&] { with.open(); },
               [&] { without.open(); })
           | compare(
               "browsing, with and without photos", goal, [&] { with.browse(); },
               [&] { without.browse(); })
           | compare(
               "scoring, with and without photos", goal, [&] { with.score(); },
               [&] { without.score(); });
}

} // namespace

int main(int count, char* arguments[])
{
    const QCoreApplication application(count, arguments);
    PhotoDialogs dialogs;
    const runtime::AppPaths paths = benchmark::programPaths(arguments[0]);
    const QTemporaryDir folder;
    makeLibrary(paths, folder.filePath(u"空.CJK"_s));
    if (!makeFolder(folder.filePath(u"照片"_s)))
        return 1;
    return compareStoring(paths, QDir(folder.path())) | compareUse(paths, QDir(folder.path()));
}
