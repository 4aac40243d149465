#include "oldlibraries/Conversion.h"

#include <algorithm>
#include <limits>

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

#include "oldlibraries/Completion.h"
#include "oldlibraries/Faults.h"
#include "oldlibraries/KeyFaults.h"
#include "oldlibraries/Losses.h"
#include "oldlibraries/OldDatabase.h"
#include "oldlibraries/OldFileError.h"
#include "oldlibraries/TableComparison.h"
#include "oldlibraries/TableCopy.h"
#include "platform/database/EmptyLibrary.h"
#include "platform/database/FileIdentity.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/TableNames.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/UnfinishedFile.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::Connection;
using database::isSameFile;
using database::WriteBatch;
using Existing = ConversionRequest::Existing;
using MissingRows = ConversionRequest::MissingRows;

namespace {

/// Rows between two looks at the progress.
constexpr qint64 rowsBetweenLooks = 50;

QString dropStatement(const QString& table)
{
    return database::sqlWith(u"drop table %1"_s, {database::SqlPiece::names({table})});
}

/// One conversion, from the checks up to the new file under its name.
class Converter
{
public:
    Converter(const ConversionRequest& request, runtime::Progress& progress)
        : m_request(request),
          m_progress(progress),
          m_old(request.oldPath),
          m_target(database::realPath(request.newPath))
    {
        m_report.oldPath = request.oldPath;
        m_report.newPath = request.newPath;
    }

    /// The report; nothing if the user cancelled.
    std::optional<ConversionReport> run();

private:
    void checkPassword() const;
    void checkTarget() const;
    void checkIsLibrary(const std::vector<OldTable>& tables) const;
    bool fill(const QString& path);
    bool copyTables(Connection& library);
    Copied copyTable(Connection& library, TargetTable& table);
    Copied copyRows(Connection& library, const TargetTable& table);
    void checkAllRead(const TargetTable& table, qint64 rows) const;
    bool compareTables(Connection& library);
    void complete(Connection& library);
    void checkKept(Connection& library) const;
    void putInPlace(runtime::UnfinishedFile& file) const;
    void refuseExisting() const;
    /// `rows` are those that are done, in both passes.
    void report(const QString& text, qint64 rows);
    /// For the rows of one table; `word` says what is done with them.
    TellRows tellRows(const QString& word, const TargetTable& table);

    const ConversionRequest& m_request;
    runtime::Progress& m_progress;
    OldDatabase m_old;
    QString m_target;
    std::vector<TargetTable> m_tables;
    ConversionReport m_report;
    /// Rows of the tables that are done, counted in both passes.
    qint64 m_rowsDone = 0;
    qint64 m_rowsTotal = 0;
};

std::optional<ConversionReport> Converter::run()
{
    checkPassword();
    checkTarget();
    const std::optional<database::FileLock> held = database::heldForReplacing(m_target);
    runtime::UnfinishedFile file(m_target);
    file.write(database::emptyLibraryBytes(m_request.templateFile));
    if (!fill(file.path()) || m_progress.cancelled())
        return std::nullopt;
    m_old.file().checkUnchanged();
    putInPlace(file);
    return m_report;
}

void Converter::checkPassword() const
{
    if (!m_old.isPassword(m_request.password))
        throw OldFileError(OldFileFailure::Password,
                           (m_request.password.isEmpty() ? u"%1 有密码。"_s : u"%1 的密码不对。"_s)
                               .arg(m_request.oldPath));
}

void Converter::checkTarget() const
{
    database::checkPathLength(m_target);
    if (const QString refusal = targetRefusal(m_request); !refusal.isEmpty())
        throw runtime::Error(refusal);
    if (m_request.existing == Existing::Keep && QFileInfo::exists(m_target))
        refuseExisting();
}

void Converter::refuseExisting() const
{
    throw runtime::Error(u"文件 %1 已存在，没有转换。"_s.arg(m_request.newPath));
}

/// Any program's data can stand in a file of the old engine.
void Converter::checkIsLibrary(const std::vector<OldTable>& tables) const
{
    const QStringList known = {u"信息表"_s, u"成绩表"_s, u"考试名称表"_s};
    if (std::none_of(tables.begin(), tables.end(),
                     [&](const OldTable& table) { return known.contains(table.name); }))
        throw OldFileError(
            OldFileFailure::Foreign,
            u"%1 里没有信息表、成绩表和考试名称表，不是成绩库。"_s.arg(m_request.oldPath));
}

/// False if the user cancelled.
bool Converter::fill(const QString& path)
{
    {
        Connection library;
        library.OpenUnfinished(path);
        WriteBatch batch(library);
        if (!copyTables(library))
            return false;
        batch.commit();
    }
    // Opened anew: what is compared comes from the file.
    Connection library;
    library.OpenUnfinished(path);
    if (!compareTables(library))
        return false;
    complete(library);
    return true;
}

bool Converter::copyTables(Connection& library)
{
    const std::vector<OldTable> oldTables = m_old.readTables();
    checkIsLibrary(oldTables);
    findLosses(m_old, oldTables, m_report.findings);
    m_tables = targetTables(oldTables, library, m_report.findings);
    for (const QString& table : database::tableNames(library))
        library.Execute(dropStatement(table));
    for (const TargetTable& table : m_tables)
        m_rowsTotal += 2 * qint64(table.old.rowCount);
    for (TargetTable& table : m_tables) {
        if (copyTable(library, table) == Copied::Cancelled)
            return false;
    }
    return true;
}

Copied Converter::copyTable(Connection& library, TargetTable& table)
{
    Copied copied = copyRows(library, table);
    if (copied != Copied::UnfitKeys)
        return copied;
    library.Execute(dropStatement(table.name));
    const TargetTable keyed = table;
    table = keyed.withoutKeys();
    copied = copyRows(library, table);
    if (copied == Copied::All)
        findKeyFaults(library, keyed, m_report.findings);
    return copied;
}

/// Makes the table with its rows.
Copied Converter::copyRows(Connection& library, const TargetTable& table)
{
    database::createTable(library, table.name, table.columns);
    TableCopy copy(m_old.file(), table, library, m_report.findings);
    const Copied copied = copy.run(tellRows(u"正在复制"_s, table));
    if (copied != Copied::All)
        return copied;
    checkAllRead(table, copy.rowCount());
    keepLastNumber(library, table);
    m_rowsDone += copy.rowCount();
    m_report.tables.push_back({table.name, copy.rowCount()});
    return copied;
}

void Converter::checkAllRead(const TargetTable& table, qint64 rows) const
{
    if (rows < table.old.rowCount && m_request.missingRows == MissingRows::Refuse)
        throw OldFileError(OldFileFailure::RowsMissing,
                           u"%1 的表“%2”记着 %3 行，只读到 %4 行，文件可能已损坏，没有转换。"_s.arg(
                               m_request.oldPath, table.old.name,
                               QString::number(table.old.rowCount), QString::number(rows)));
}

bool Converter::compareTables(Connection& library)
{
    m_old.file().readAnew();
    for (size_t i = 0; i < m_tables.size(); ++i) {
        const qint64 rows = m_report.tables[i].rows;
        TableComparison comparison(m_old.file(), m_tables[i], library, rows);
        if (!comparison.run(tellRows(u"正在核对"_s, m_tables[i])))
            return false;
        m_rowsDone += rows;
    }
    return true;
}

void Converter::complete(Connection& library)
{
    report(u"正在补全和检查新成绩库"_s, m_rowsDone);
    WriteBatch batch(library);
    completeLibrary(library, m_request.templateFile, m_report.findings);
    checkKept(library);
    batch.commit();
    findFaults(library, m_report.findings);
}

/// What was completed, tables made anew among it, has the rows that it had.
void Converter::checkKept(Connection& library) const
{
    for (const ConversionReport::Table& table : m_report.tables) {
        database::Statement counted(library,
                                    database::sqlWith(u"select count(*) from %1"_s,
                                                      {database::SqlPiece::names({table.name})}));
        if (!counted.step() || counted.integer(0) < table.rows)
            throw runtime::Error(u"表“%1”写得不完整，没有转换。"_s.arg(table.name));
    }
}

TellRows Converter::tellRows(const QString& word, const TargetTable& table)
{
    return [this, word, &table](qint64 rows) {
        if (rows % rowsBetweenLooks != 0 && rows != table.old.rowCount)
            return true;
        report(u"%1 %2：%3/%4"_s.arg(word, table.name, QString::number(rows),
                                     QString::number(table.old.rowCount)),
               m_rowsDone + rows);
        return !m_progress.cancelled();
    };
}

void Converter::report(const QString& text, qint64 rows)
{
    const qint64 total = std::min<qint64>(m_rowsTotal, std::numeric_limits<int>::max());
    m_progress.report(text, int(std::min(rows, total)), int(total));
}

void Converter::putInPlace(runtime::UnfinishedFile& file) const
{
    database::removeLogs(m_target);
    if (m_request.existing == Existing::Replace)
        file.replace(m_target, m_target);
    else if (!file.takeName(m_target, m_target))
        refuseExisting();
}

} // namespace

QString suggestedPath(const QString& oldPath)
{
    const QFileInfo old(oldPath);
    return old.dir().filePath(old.completeBaseName() + u"（转换）.CJK"_s);
}

QString targetRefusal(const ConversionRequest& request)
{
    const QString& path = request.newPath;
    // What a crash left beside the target goes with it.
    for (const QString& ending : {QString(), u"-journal"_s, u"-wal"_s}) {
        if (isSameFile(database::realPath(path) + ending, request.oldPath))
            return u"%1 就是旧成绩库，不能覆盖。"_s.arg(path + ending);
    }
    if (isSameFile(path, request.templateFile))
        return u"%1 是程序的空白成绩库，不能覆盖。"_s.arg(path);
    const bool isUsed = isSameFile(path, request.openPath)
                        || (request.existing == Existing::Replace && database::isInUse(path));
    return isUsed ? database::inUseError(path).description() : QString();
}

std::optional<ConversionReport> convert(const ConversionRequest& request,
                                        runtime::Progress& progress)
{
    const auto over = qScopeGuard([&progress] { progress.finish(); });
    return Converter(request, progress).run();
}

} // namespace oldlibraries
