// Libraries of the old engine become new ones: 60 exams of 3,000 students with 80 columns against a
// bare SQLite program that inserts the same rows (also told: with the indexes), and 3,000 photos of
// 100 KB against one that inserts the same bytes and against their copy. Each run is a process of
// its own, in turns; medians of three, and the most memory that a conversion held. Exit code 1 if a
// goal is missed.
//
//     bench_oldlibraries [FOLDER]                 all of it; the files stand in the folder
//     bench_oldlibraries make-scores|make-photos OLD
//     bench_oldlibraries convert OLD NEW          and so on: what the processes do

#include <cmath>
#include <cstdio>
#include <functional>
#include <map>

#include <sqlite3.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "benchmarks/OldLibraries.h"
#include "benchmarks/Support.h"
#include "oldlibraries/Conversion.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;
using benchmark::SchoolPhotos;
using benchmark::SchoolScores;

namespace {

constexpr int rounds = 3;

/// The engine alone, with one statement that inserts rows in one transaction.
class BareTable
{
public:
    BareTable(const QString& path, const QString& columns, int columnCount)
    {
        QFile::remove(path);
        check(sqlite3_open(path.toUtf8().constData(), &m_handle));
        run(u"pragma synchronous=full"_s);
        run(u"create table [表] (%1)"_s.arg(columns));
        run(u"begin"_s);
        const QByteArray sql =
            "insert into [表] values (?" + QByteArray(",?").repeated(columnCount - 1) + ")";
        check(sqlite3_prepare_v2(m_handle, sql.constData(), -1, &m_insert, nullptr));
    }
    ~BareTable()
    {
        sqlite3_finalize(m_insert);
        sqlite3_close(m_handle);
    }
    BareTable(const BareTable&) = delete;
    BareTable& operator=(const BareTable&) = delete;

    void bind(int place, int number) { sqlite3_bind_int(m_insert, place, number); }
    void bind(int place, double number)
    {
        if (std::isnan(number))
            sqlite3_bind_null(m_insert, place);
        else
            sqlite3_bind_double(m_insert, place, number);
    }
    /// The bytes have to stay until the row is inserted.
    void bindText(int place, const QByteArray& text)
    {
        if (text.isEmpty())
            sqlite3_bind_null(m_insert, place);
        else
            sqlite3_bind_text(m_insert, place, text.constData(), int(text.size()), SQLITE_STATIC);
    }
    void bindBytes(int place, const QByteArray& bytes)
    {
        sqlite3_bind_blob(m_insert, place, bytes.constData(), int(bytes.size()), SQLITE_STATIC);
    }
    void insert()
    {
        check(sqlite3_step(m_insert));
        check(sqlite3_reset(m_insert));
    }
    void addIndex(const QString& columns)
    {
        run(u"create index [表_%1] on [表](%2)"_s.arg(++m_indexes).arg(columns));
    }
    void commit() { run(u"commit"_s); }

private:
    static void check(int code)
    {
        if (code != SQLITE_OK && code != SQLITE_DONE)
            throw runtime::Error(u"the bare program failed: %1"_s.arg(code));
    }
    void run(const QString& sql)
    {
        check(sqlite3_exec(m_handle, sql.toUtf8().constData(), nullptr, nullptr, nullptr));
    }

    sqlite3* m_handle = nullptr;
    sqlite3_stmt* m_insert = nullptr;
    int m_indexes = 0;
};

QString scoreDeclarations()
{
    QStringList columns{u"[id] Long INTEGER"_s,
                        u"[班级] Double REAL"_s,
                        u"[学号] Double REAL"_s,
                        u"[姓名] text(50) COLLATE NOCASE"_s,
                        u"[类别代码] Double REAL"_s,
                        u"[科类] text(50) COLLATE NOCASE"_s,
                        u"[考试名称] text(50) COLLATE NOCASE"_s,
                        u"[考试编号] Integer INTEGER"_s};
    const QStringList names = SchoolScores::numberColumnNames();
    for (qsizetype i = 0; i < names.size(); ++i)
        columns.append(u"[%1] %2"_s.arg(names[i], SchoolScores::numberDeclarations()[i]));
    columns.append(u"[备注] Memo TEXT COLLATE NOCASE"_s);
    return columns.join(u", "_s);
}

void insertScores(BareTable& table, int exam, const std::vector<QByteArray>& names,
                  const std::vector<QByteArray>& notes)
{
    const QByteArray examName = SchoolScores::examName(exam).toUtf8();
    const QByteArray stream = u"理"_s.toUtf8();
    for (int student = 0; student < SchoolScores::students; ++student) {
        table.bind(1, student + 1);
        table.bind(2, SchoolScores::classOf(student));
        table.bind(3, SchoolScores::numberOf(student));
        table.bindText(4, names[size_t(student)]);
        table.bind(5, 1);
        table.bindText(6, stream);
        table.bindText(7, examName);
        table.bind(8, exam + 1);
        int place = 9;
        for (const double number : SchoolScores::numbers(exam, student))
            table.bind(place++, number);
        table.bindText(place, notes[size_t(student)]);
        table.insert();
    }
}

/// `indexes` are those that a library has.
void insertAllScores(const QString& path, const QStringList& indexes = {})
{
    std::vector<QByteArray> names;
    std::vector<QByteArray> notes;
    for (int student = 0; student < SchoolScores::students; ++student) {
        names.push_back(SchoolScores::studentName(student).toUtf8());
        notes.push_back(SchoolScores::note(student).toUtf8());
    }
    BareTable table(path, scoreDeclarations(), SchoolScores::numberColumns + 9);
    for (int exam = 0; exam < SchoolScores::exams; ++exam)
        insertScores(table, exam, names, notes);
    for (const QString& columns : indexes)
        table.addIndex(columns);
    table.commit();
}

void insertAllPhotos(const QString& path)
{
    const SchoolPhotos photos;
    BareTable table(path, u"[ID] INTEGER PRIMARY KEY, [照片] LongBinary BLOB"_s, 2);
    for (int student = 0; student < SchoolPhotos::students; ++student) {
        const QByteArray photo = photos.photo(student);
        table.bind(1, student + 1);
        table.bindBytes(2, photo);
        table.insert();
    }
    table.commit();
}

/// The file's bytes, up to the disk.
void copyBytes(const QString& from, const QString& to)
{
    constexpr qint64 pieceSize = 1 << 20;
    QFile source(from);
    QFile copy(to);
    bool isDone =
        source.open(QIODevice::ReadOnly) && copy.open(QIODevice::WriteOnly | QIODevice::Truncate);
    while (isDone && !source.atEnd())
        isDone = copy.write(source.read(pieceSize)) > 0;
    if (!isDone || !copy.flush() || ::fsync(copy.handle()) != 0)
        throw runtime::Error(u"the copy failed"_s);
}

void convert(const QString& from, const QString& to)
{
    runtime::NoProgress progress;
    const QString templateFile = QCoreApplication::applicationDirPath() + u"/MFC.dll"_s;
    const std::optional<oldlibraries::ConversionReport> report = oldlibraries::convert(
        {from, to, templateFile, {}, oldlibraries::ConversionRequest::Existing::Replace}, progress);
    if (!report || report->tables.empty())
        throw runtime::Error(u"no report"_s);
}

/// What one process does: the figures of its run go to the one that started it.
int runTask(const QString& task, const QString& from, const QString& to)
{
    const std::map<QString, std::function<void()>> tasks{
        {u"make-scores"_s, [&] { benchmark::makeOldScores(from); }},
        {u"make-photos"_s, [&] { benchmark::makeOldPhotos(from); }},
        {u"convert"_s, [&] { convert(from, to); }},
        {u"insert-scores"_s, [&] { insertAllScores(to); }},
        {u"insert-and-index-scores"_s,
         [&] {
             insertAllScores(to, {u"考试名称, 科类, 班级"_s, u"id"_s, u"班级, 学号"_s});
         }},
        {u"insert-photos"_s, [&] { insertAllPhotos(to); }},
        {u"copy"_s, [&] { copyBytes(from, to); }}};
    if (!tasks.contains(task))
        return 2;
    QElapsedTimer timer;
    timer.start();
    tasks.at(task)();
    std::printf("%.1f %.1f\n", benchmark::milliseconds(timer), benchmark::peakMemory());
    return 0;
}

struct Figures
{
    double milliseconds = 0;
    double peakMemory = 0;
};

Figures measured(const QStringList& arguments)
{
    // Nothing that another run wrote is still on its way to the disk.
    ::sync();
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.waitForFinished(-1);
    const QList<QByteArray> figures = process.readAllStandardOutput().trimmed().split(' ');
    if (process.exitCode() != 0 || figures.size() != 2)
        throw runtime::Error(u"%1 failed"_s.arg(arguments.join(u' ')));
    return {figures[0].toDouble(), figures[1].toDouble()};
}

/// The runs of conversions and of what bounds them.
struct Rounds
{
    std::map<QString, std::vector<double>> times;
    double peakMemory = 0; ///< of a conversion
};

Rounds measuredRounds(const QStringList& bounds, const QDir& folder, const QString& old)
{
    Rounds done;
    for (int round = 0; round < rounds; ++round) {
        for (const QString& task : QStringList{u"convert"_s} + bounds) {
            const Figures figures =
                measured({task, folder.filePath(old), folder.filePath(u"新-%1.CJK"_s.arg(task))});
            done.times[task].push_back(figures.milliseconds);
            if (task == "convert"_L1)
                done.peakMemory = std::max(done.peakMemory, figures.peakMemory);
        }
    }
    return done;
}

/// The first of the bounds has a goal, the others are told. 1 if a goal is missed.
int compare(const char* what, const QStringList& bounds, const QDir& folder, const QString& old)
{
    constexpr double goal = 3;
    constexpr double goalOfMemory = 200;
    const Rounds done = measuredRounds(bounds, folder, old);
    const double ours = benchmark::median(done.times.at(u"convert"_s));
    std::printf("%s: peak memory %.1f MB (goal %.0f MB)\n", what, done.peakMemory, goalOfMemory);
    for (const QString& bound : bounds) {
        const double theirs = benchmark::median(done.times.at(bound));
        const char* wanted = bound == bounds.front() ? " (goal 3)" : "";
        std::printf("%s, %s: %.1f ms, %.1f ms, ratio %.2f%s\n", what, qPrintable(bound), ours,
                    theirs, ours / theirs, wanted);
    }
    const bool isFast = ours <= goal * benchmark::median(done.times.at(bounds.front()));
    return isFast && done.peakMemory < goalOfMemory ? 0 : 1;
}

int compareAll(const QDir& folder)
{
    measured({u"make-scores"_s, folder.filePath(u"成绩.CJK"_s)});
    measured({u"make-photos"_s, folder.filePath(u"照片.CJK"_s)});
    return compare("180,000 rows of 80 columns", {u"insert-scores"_s, u"insert-and-index-scores"_s},
                   folder, u"成绩.CJK"_s)
           | compare("3,000 photos", {u"insert-photos"_s, u"copy"_s}, folder, u"照片.CJK"_s);
}

} // namespace

int main(int count, char* arguments[])
{
    const QCoreApplication application(count, arguments);
    const QStringList given = QCoreApplication::arguments().mid(1);
    try {
        if (given.size() > 1)
            return runTask(given[0], given[1], given.value(2));
        const QTemporaryDir own;
        return compareAll(QDir(given.isEmpty() ? own.path() : given[0]));
    } catch (const runtime::Error& error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.description()));
        return 2;
    }
}
