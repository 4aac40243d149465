#include "platform/database/Error.h"

#include <sqlite3.h>

#include <QRegularExpression>

namespace database {

namespace {

using namespace Qt::StringLiterals;

QString withEngineWords(const QString& description, const QString& engineWords)
{
    return engineWords.isEmpty() ? description : description + u"（%1）"_s.arg(engineWords);
}

constexpr const char16_t* noColumn = u"没有名为“%1”的列。";

struct Wording
{
    const char* pattern;
    const char16_t* chinese;
};

/// Words of the engine for a wrong statement; %1 is what the pattern catches.
constexpr Wording sqlWordings[] = {
    {"^no such column: \"(.*)\"$", noColumn},
    {"^no such column: (.*)$", noColumn},
    {"^no such table: (.*)$", u"没有名为“%1”的表。"},
    {"^access to view \"(.*)\" prohibited$", u"“%1”是视图，不是表，不能使用。"},
    {"^no such function: (.*)$", u"没有名为“%1”的函数。"},
    {"^near \"(.*)\": syntax error$", u"语句有语法错误，在“%1”附近。"},
    {"^unrecognized token: \"(.*)\"$", u"语句有语法错误，在“%1”处引号不配对或字符无效。"},
    {"^incomplete input(.*)$", u"语句不完整。%1"},
    {"^duplicate column name: (.*)$", u"列“%1”已经存在。"},
    {"^ambiguous column name: (.*)$", u"列名“%1”不明确。"},
    {"^table (.*) already exists$", u"表“%1”已经存在。"},
};

Error sqlError(const QString& words)
{
    if (words.startsWith("not authorized"_L1))
        return Error(Failure::Refused, u"成绩库里不允许执行这样的语句。"_s, words);
    for (const Wording& wording : sqlWordings) {
        const QRegularExpression pattern(QString::fromLatin1(wording.pattern),
                                         QRegularExpression::DotMatchesEverythingOption);
        const QRegularExpressionMatch match = pattern.match(words);
        if (match.hasMatch())
            return Error(Failure::Sql, QString::fromUtf16(wording.chinese).arg(match.captured(1)),
                         words);
    }
    return Error(Failure::Sql, u"语句无法执行。"_s, words);
}

struct Condition
{
    int code;
    Failure failure;
    const char16_t* chinese;
};

constexpr Condition conditions[] = {
    {SQLITE_BUSY, Failure::Locked, u"成绩库正被别的程序使用，请关闭那个程序后再试。"},
    {SQLITE_LOCKED, Failure::Locked, u"这张表正在使用，现在不能改动。"},
    {SQLITE_READONLY, Failure::ReadOnly, u"成绩库是只读的，不能写入。"},
    {SQLITE_FULL, Failure::DiskFull, u"磁盘已满，没有写入。"},
    {SQLITE_CORRUPT, Failure::Damaged, u"成绩库文件已经损坏。"},
    {SQLITE_NOTADB, Failure::NoLibrary, u"这个文件不是成绩库。"},
    {SQLITE_CANTOPEN, Failure::Other, u"无法打开成绩库文件，或不能在它旁边建立临时文件。"},
    {SQLITE_IOERR, Failure::Other, u"读写成绩库文件时出错，磁盘可能已满或已断开。"},
    {SQLITE_NOMEM, Failure::Other, u"内存不足。"},
    {SQLITE_TOOBIG, Failure::Value, u"内容太长，无法保存。"},
    {SQLITE_CONSTRAINT, Failure::Value, u"已经有同样的内容，或缺少必需的内容，没有写入。"},
    {SQLITE_MISMATCH, Failure::Value, u"内容不适合这一列，没有写入。"},
    {SQLITE_INTERRUPT, Failure::Refused, u"语句运行时间太长，已经停止。"},
    {SQLITE_AUTH, Failure::Refused, u"成绩库里不允许执行这样的语句。"},
};

} // namespace

Error::Error(Failure failure, const QString& description, const QString& engineWords)
    : runtime::Error(withEngineWords(description, engineWords)), m_failure(failure)
{
}

QString noCurrentRow()
{
    return u"没有当前记录。"_s;
}

QString noSuchColumn(const QString& name)
{
    return QString::fromUtf16(noColumn).arg(name);
}

Error engineError(sqlite3* handle)
{
    const int code = handle ? sqlite3_errcode(handle) & 0xff : SQLITE_NOMEM;
    const QString words = handle ? QString::fromUtf8(sqlite3_errmsg(handle)) : QString();
    for (const Condition& condition : conditions) {
        if (condition.code == code)
            return Error(condition.failure, QString::fromUtf16(condition.chinese), words);
    }
    return sqlError(words);
}

bool isFileTrouble(sqlite3* handle)
{
    switch (sqlite3_errcode(handle) & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_FULL:
    case SQLITE_IOERR:
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_NOMEM:
    case SQLITE_PERM:
    case SQLITE_PROTOCOL:
    case SQLITE_NOLFS:
        return true;
    default:
        return false;
    }
}

void runOnEngine(sqlite3* handle, const char* sql)
{
    if (sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw engineError(handle);
}

} // namespace database
