// 3,000 students sent to new classes by a sheet that is open already, against the bare statements
// in one transaction: the work table emptied and filled, the students read, both tables updated.
// Both sides in turns, each on a fresh copy; median of nine.

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <unordered_map>

#include <QFile>
#include <QTemporaryDir>

#include "benchmarks/Support.h"
#include "import/ReclassImport.h"
#include "library/NewLibrary.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int students = 3000;
constexpr int classSize = 50;
constexpr int rounds = 9;

/// A student's old place, and the new one: every class is mixed anew.
struct Change
{
    int classNumber;
    int number;
    QByteArray name;
    int newClass;
    int newNumber;
};

std::vector<Change> allChanges()
{
    std::vector<Change> changes;
    for (int i = 0; i < students; ++i) {
        const int place = i * 7 % students;
        changes.push_back({i / classSize + 1, i % classSize + 1, u"学生%1"_s.arg(i).toUtf8(),
                           place / classSize + 1, place % classSize + 1});
    }
    return changes;
}

/// Goes on after the counts.
class QuickDialogs : public benchmark::PrintedDialogs
{
public:
    int choose(const runtime::Choice&) override { return 0; }
    runtime::Answer message(const QString&, const QString&, runtime::Buttons,
                            runtime::Icon) override
    {
        return runtime::Answer::Ok;
    }
};

void fillLibrary(library::ScoreLibrary& scores, const std::vector<Change>& changes)
{
    library::NewLibrary(scores).create({u"语文"_s, u"总分"_s});
    database::WriteBatch batch(scores.Conn);
    database::Statement& insert = scores.Conn.prepared(
        u"insert into 信息表(班级,学号,姓名,科类,类别代码) values(?,?,?,'理',1)"_s);
    for (const Change& change : changes) {
        insert.bind({change.classNumber, change.number, QString::fromUtf8(change.name)});
        insert.run();
    }
    batch.commit();
}

void fillSheet(excel::Worksheet& sheet, const std::vector<Change>& changes)
{
    int column = 0;
    for (const char* heading : {"班级", "学号", "姓名", "新班级", "新学号"})
        sheet.setCell(1, ++column, QString::fromUtf8(heading));
    int row = 1;
    for (const Change& change : changes) {
        ++row;
        sheet.setCell(row, 1, change.classNumber);
        sheet.setCell(row, 2, change.number);
        sheet.setCell(row, 3, QString::fromUtf8(change.name));
        sheet.setCell(row, 4, change.newClass);
        sheet.setCell(row, 5, change.newNumber);
    }
}

/// Milliseconds of ours on the open library.
double ours(library::ScoreLibrary& scores, importing::WorkbookIntake& intake, const QString& sheet)
{
    runtime::NoProgress progress;
    QElapsedTimer timer;
    timer.start();
    importing::ReclassImport(scores, intake, progress).run(sheet, importing::Backup::SwitchedOff);
    return benchmark::milliseconds(timer);
}

void check(int code)
{
    if (code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW)
        return;
    std::fprintf(stderr, "the bare statements failed: %d\n", code);
    std::exit(2);
}

/// The engine alone.
class BareFile
{
public:
    explicit BareFile(const QString& path)
    {
        check(sqlite3_open(path.toUtf8().constData(), &m_handle));
        run("pragma synchronous=full");
    }
    ~BareFile() { sqlite3_close(m_handle); }
    BareFile(const BareFile&) = delete;
    BareFile& operator=(const BareFile&) = delete;

    void run(const char* sql) { check(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr)); }

    /// Takes the changes to the work table and gives them by class and number.
    std::unordered_map<int, const Change*> fill(const std::vector<Change>& changes)
    {
        sqlite3_stmt* insert = prepared("insert into 分班表(班级,学号,姓名,新班级,新学号,已分班)"
                                        " values(?,?,?,?,?,0)");
        std::unordered_map<int, const Change*> byPlace;
        for (const Change& change : changes) {
            sqlite3_bind_int(insert, 1, change.classNumber);
            sqlite3_bind_int(insert, 2, change.number);
            sqlite3_bind_text(insert, 3, change.name.constData(), int(change.name.size()),
                              SQLITE_STATIC);
            sqlite3_bind_int(insert, 4, change.newClass);
            sqlite3_bind_int(insert, 5, change.newNumber);
            step(insert);
            byPlace.emplace(change.classNumber * 1000 + change.number, &change);
        }
        sqlite3_finalize(insert);
        return byPlace;
    }

    void move(const std::unordered_map<int, const Change*>& byPlace, const Change* first)
    {
        sqlite3_stmt* place = prepared("update 信息表 set 班级=?, 学号=? where ID=?");
        sqlite3_stmt* mark = prepared("update 分班表 set 已分班=? where ID=?");
        const sqlite3_int64 before = sqlite3_last_insert_rowid(m_handle) - students;
        for (const auto& [id, key] : studentPlaces()) {
            const Change* change = byPlace.at(key);
            sqlite3_bind_int(place, 1, change->newClass);
            sqlite3_bind_int(place, 2, change->newNumber);
            sqlite3_bind_int64(place, 3, id);
            step(place);
            sqlite3_bind_int64(mark, 1, id);
            sqlite3_bind_int64(mark, 2, before + 1 + (change - first));
            step(mark);
        }
        sqlite3_finalize(place);
        sqlite3_finalize(mark);
    }

private:
    std::vector<std::pair<sqlite3_int64, int>> studentPlaces()
    {
        sqlite3_stmt* rows = prepared("select ID, 班级, 学号, 姓名 from 信息表 order by rowid");
        std::vector<std::pair<sqlite3_int64, int>> places;
        while (sqlite3_step(rows) == SQLITE_ROW)
            places.emplace_back(sqlite3_column_int64(rows, 0),
                                sqlite3_column_int(rows, 1) * 1000 + sqlite3_column_int(rows, 2));
        sqlite3_finalize(rows);
        return places;
    }

    sqlite3_stmt* prepared(const char* sql)
    {
        sqlite3_stmt* statement = nullptr;
        check(sqlite3_prepare_v2(m_handle, sql, -1, &statement, nullptr));
        return statement;
    }

    static void step(sqlite3_stmt* statement)
    {
        check(sqlite3_step(statement));
        check(sqlite3_reset(statement));
    }

    sqlite3* m_handle = nullptr;
};

/// Milliseconds of the bare statements.
double bare(const QString& path, const std::vector<Change>& changes)
{
    BareFile file(path);
    // The library is open before ours begins, too.
    file.run("select count(*) from 信息表");
    QElapsedTimer timer;
    timer.start();
    file.run("begin immediate");
    file.run("delete from 分班表");
    file.move(file.fill(changes), changes.data());
    file.run("commit");
    return benchmark::milliseconds(timer);
}

/// What a side left of all students and of the work table.
QString outcome(library::ScoreLibrary& scores, const QString& path)
{
    scores.LibPath = path;
    scores.OpenDB();
    QString all;
    for (const QString& sql : {u"select group_concat(ID||','||班级||','||学号) from 信息表"_s,
                               u"select group_concat(新班级||','||已分班) from 分班表"_s}) {
        database::Recordset rows;
        rows.Open(sql, scores.Conn);
        all += rows.Fields(0).Value().text() + u'\n';
    }
    return all;
}

} // namespace

int main(int, char* arguments[])
{
    QuickDialogs dialogs;
    const QTemporaryDir folder;
    library::ScoreLibrary scores(benchmark::programPaths(arguments[0]));
    scores.LibPath = folder.filePath(u"原样.CJK"_s);
    const QString original = scores.LibPath;
    const std::vector<Change> changes = allChanges();
    fillLibrary(scores, changes);
    excel::Application application;
    excel::Workbook& book = application.Workbooks().Add();
    fillSheet(book.Worksheets().Item(1), changes);
    importing::Applications applications;
    importing::WorkbookIntake intake(applications, importing::classChangeSheet);
    intake.use(application, book, {});
    std::vector<double> times;
    std::vector<double> bounds;
    std::vector<double> ratios;
    const QString ourPath = folder.filePath(u"我们.CJK"_s);
    const QString barePath = folder.filePath(u"语句.CJK"_s);
    for (int round = 0; round < rounds; ++round) {
        scores.Conn.Close();
        for (const QString& path : {ourPath, barePath}) {
            QFile::remove(path);
            QFile::copy(original, path);
        }
        bounds.push_back(bare(barePath, changes));
        scores.LibPath = ourPath;
        scores.OpenDB();
        times.push_back(ours(scores, intake, book.Worksheets().Item(1).Name()));
        ratios.push_back(times.back() / bounds.back());
    }
    if (outcome(scores, ourPath) != outcome(scores, barePath)) {
        std::fprintf(stderr, "the two sides differ\n");
        return 2;
    }
    std::printf("re-classing %d students: %.1f ms, bare statements %.1f ms, ratio %.2f\n", students,
                benchmark::median(times), benchmark::median(bounds), benchmark::median(ratios));
    return 0;
}
