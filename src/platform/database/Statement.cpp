#include "platform/database/Statement.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include <sqlite3.h>

#include <QElapsedTimer>
#include <QHashFunctions>

#include "platform/database/ConnectionPrivate.h"
#include "platform/database/Error.h"
#include "platform/database/Sql.h"

namespace database {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

constexpr int instructionsBetweenLooks = 20000;

/// How long a typed statement has been running, all its rows together, and whether the user still
/// waits for it.
struct Watch
{
    QElapsedTimer timer;
    UserLimits limits;
    bool isStopped = false;

    void start(const UserLimits& asked)
    {
        limits = asked;
        isStopped = false;
        timer.start();
    }
    bool isOver()
    {
        isStopped = isStopped || (limits.isStopped && limits.isStopped());
        return isStopped || timer.hasExpired(limits.milliseconds);
    }
    Error error() const
    {
        return Error(Failure::Refused,
                     isStopped ? u"语句已经按要求停止。"_s : u"语句运行时间太长，已经停止。"_s);
    }
};

int isOver(void* watch)
{
    return static_cast<Watch*>(watch)->isOver();
}

/// Stops the engine when the watch has run down, as long as it lives.
class WatchedStep
{
public:
    WatchedStep(sqlite3* handle, Watch* watch) : m_handle(watch ? handle : nullptr)
    {
        if (m_handle)
            sqlite3_progress_handler(m_handle, instructionsBetweenLooks, isOver, watch);
    }
    ~WatchedStep()
    {
        if (m_handle)
            sqlite3_progress_handler(m_handle, 0, nullptr, nullptr);
    }
    WatchedStep(const WatchedStep&) = delete;
    WatchedStep& operator=(const WatchedStep&) = delete;

private:
    sqlite3* m_handle;
};

struct Finalize
{
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

/// The text in one place of a statement. The engine uses these bytes as they lie here.
struct BoundText
{
    QString text;
    QByteArray bytes;
    bool isBound = false;
};

/// Spreads the bits of a number, so that near ones become far ones.
quint64 mixed(quint64 bits, int kind)
{
    bits += 0x9e3779b97f4a7c15U * quint64(kind + 1);
    bits = (bits ^ (bits >> 30U)) * 0xbf58476d1ce4e5b9U;
    bits = (bits ^ (bits >> 27U)) * 0x94d049bb133111ebU;
    return bits ^ (bits >> 31U);
}

} // namespace

struct Statement::Private
{
    enum class State { Fresh, Running, Finished };

    Connection& connection;
    std::unique_ptr<sqlite3_stmt, Finalize> statement;
    Trust trust;
    bool readOnly = true;
    State state = State::Fresh;
    Watch watch;
    std::vector<BoundText> texts; // by place

    sqlite3* db() const { return sqlite3_db_handle(statement.get()); }
    /// To be called ahead of every new value.
    void bound(int place)
    {
        if (state == State::Finished)
            state = State::Fresh;
        if (size_t(place) < texts.size())
            texts[size_t(place)].isBound = false;
    }
    void bindText(int place, const QString& text);
};

/// Many rows repeat a text (an exam's name, a stream), which then stays where it is.
void Statement::Private::bindText(int place, const QString& text)
{
    if (size_t(place) >= texts.size())
        texts.resize(size_t(place) + 1);
    BoundText& kept = texts[size_t(place)];
    const bool same = kept.isBound && kept.text == text;
    bound(place);
    if (!same) {
        kept.text = text;
        kept.bytes = text.toUtf8();
        sqlite3_bind_text(statement.get(), place, kept.bytes.constData(), int(kept.bytes.size()),
                          SQLITE_STATIC);
    }
    kept.isBound = true;
}

Statement::Statement(Connection& connection, const QString& sql, Trust trust)
    : d(new Private{connection, {}, trust, true, Private::State::Fresh, {}, {}})
{
    sqlite3* handle = connection.openHandle();
    const UserGuard guard(handle, trust);
    const QByteArray text = sql.toUtf8();
    sqlite3_stmt* statement = nullptr;
    const char* tail = nullptr;
    if (sqlite3_prepare_v2(handle, text.constData(), int(text.size()), &statement, &tail)
        != SQLITE_OK)
        connection.fail();
    d->statement.reset(statement);
    const std::optional<std::vector<SqlToken>> rest = sqlTokens(QString::fromUtf8(tail));
    if (!rest || std::any_of(rest->begin(), rest->end(), [](const SqlToken& token) {
            return !token.isSign(u';');
        }))
        throw Error(Failure::Refused, u"一次只能执行一条语句。"_s);
    if (!statement)
        throw Error(Failure::Sql, u"没有可以执行的语句。"_s);
    // VACUUM INTO, ANALYZE and their like do their work where the guard of the text does not see
    // it.
    if (trust == Trust::User && !isUserStatement(sql))
        throw Error(Failure::Refused, u"成绩库里不允许执行这样的语句。"_s);
    d->readOnly = sqlite3_stmt_readonly(statement) != 0;
}

Statement::~Statement() = default;

void Statement::bind(const std::vector<Value>& values)
{
    reset();
    for (size_t i = 0; i < values.size(); ++i)
        bindValue(int(i) + 1, values[i]);
}

void Statement::bindQuoted(const std::vector<Value>& values)
{
    for (const Value& value : values) {
        if (value.kind() == Value::Kind::Text && value.text().contains(u'\''))
            throw Error(Failure::Sql,
                        u"语句有语法错误：“%1”里有单引号。"_s.arg(value.text().left(60)));
    }
    bind(values);
}

void Statement::reset()
{
    if (d->state == Private::State::Running)
        sqlite3_reset(d->statement.get());
    d->state = Private::State::Fresh;
}

void Statement::finish()
{
    reset();
    d->state = Private::State::Finished;
}

void Statement::bindValue(int place, const Value& value)
{
    switch (value.kind()) {
    case Value::Kind::Null:
        return bindNull(place);
    case Value::Kind::Integer:
        return bindInteger(place, qint64(value.toDouble()));
    case Value::Kind::Boolean:
        return bindInteger(place, value.toDouble() != 0);
    case Value::Kind::Single:
    case Value::Kind::Double:
        return bindDouble(place, value.toDouble());
    case Value::Kind::Binary: {
        d->bound(place);
        const QByteArray bytes = value.toBytes();
        sqlite3_bind_blob64(d->statement.get(), place, bytes.constData(),
                            sqlite3_uint64(bytes.size()), SQLITE_TRANSIENT);
        return;
    }
    case Value::Kind::Text:
    case Value::Kind::Date:
    case Value::Kind::Error:
        break;
    }
    d->bindText(place, value.text());
}

void Statement::bindNull(int place)
{
    d->bound(place);
    sqlite3_bind_null(d->statement.get(), place);
}

void Statement::bindInteger(int place, qint64 number)
{
    d->bound(place);
    sqlite3_bind_int64(d->statement.get(), place, number);
}

void Statement::bindDouble(int place, double number)
{
    d->bound(place);
    sqlite3_bind_double(d->statement.get(), place, number);
}

void Statement::bindNumbers(int first, std::span<const double> numbers)
{
    // Whole numbers take the shorter way through the engine, which would find out itself that they
    // are.
    for (const double number : numbers) {
        const bool isWhole = std::abs(number) < 1e15 && double(qint64(number)) == number;
        d->bound(first);
        if (isWhole)
            sqlite3_bind_int64(d->statement.get(), first, qint64(number));
        else
            sqlite3_bind_double(d->statement.get(), first, number);
        ++first;
    }
}

bool Statement::step()
{
    if (d->state == Private::State::Finished)
        return false;
    if (d->state == Private::State::Fresh)
        begin();
    sqlite3* handle = d->db();
    const bool isUsers = d->trust == Trust::User;
    const WatchedStep watched(handle, isUsers ? &d->watch : nullptr);
    const int code = sqlite3_step(d->statement.get());
    // A row can come so fast that the engine never looks up in between.
    if (isUsers && (code & 0xff) != SQLITE_DONE && d->watch.isOver())
        stop();
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        fail();
    reset();
    return false;
}

void Statement::begin()
{
    if (d->connection.handle() != d->db())
        throw Error(Failure::Missing, u"成绩库已经关闭。"_s);
    if (!d->readOnly)
        d->connection.prepareWrite();
    if (d->trust == Trust::User) {
        d->watch.start(d->connection.userLimits());
    }
    d->state = Private::State::Running;
}

void Statement::stop()
{
    if (!d->readOnly && d->connection.d->batchDepth > 0)
        d->connection.d->batchFailed = true;
    reset();
    throw d->watch.error();
}

void Statement::fail()
{
    try {
        d->connection.fail();
    } catch (...) {
        // Only now: the engine forgets its error with the statement.
        reset();
        throw;
    }
}

int Statement::run()
{
    while (step()) {
    }
    const int changes = sqlite3_changes(d->db());
    const Connection::Private& connection = *d->connection.d;
    if (!d->readOnly && connection.batchDepth == 0)
        connection.identity.checkWritten(connection.path);
    return changes;
}

bool Statement::readsOnly() const
{
    return d->readOnly;
}

int Statement::columnCount() const
{
    return sqlite3_column_count(d->statement.get());
}

QString Statement::columnName(int column) const
{
    return QString::fromUtf8(sqlite3_column_name(d->statement.get(), column));
}

QString Statement::columnDeclaration(int column) const
{
    return QString::fromUtf8(sqlite3_column_decltype(d->statement.get(), column));
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(d->statement.get(), column) == SQLITE_NULL;
}

double Statement::number(int column) const
{
    return sqlite3_column_double(d->statement.get(), column);
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(d->statement.get(), column);
}

bool Statement::readNumbers(int first, std::span<double> numbers) const
{
    sqlite3_stmt* statement = d->statement.get();
    bool hasOthers = false;
    for (double& number : numbers) {
        const int type = sqlite3_column_type(statement, first);
        number = sqlite3_column_double(statement, first);
        const bool isNumber =
            (type == SQLITE_INTEGER || type == SQLITE_FLOAT) && std::isfinite(number);
        if (!isNumber)
            number = std::numeric_limits<double>::quiet_NaN();
        hasOthers = hasOthers || (!isNumber && type != SQLITE_NULL);
        ++first;
    }
    return hasOthers;
}

qint64 Statement::size(int column) const
{
    const int type = sqlite3_column_type(d->statement.get(), column);
    const bool hasBytes = type == SQLITE_TEXT || type == SQLITE_BLOB;
    return hasBytes ? sqlite3_column_bytes(d->statement.get(), column) : 0;
}

QString Statement::text(int column) const
{
    sqlite3_stmt* statement = d->statement.get();
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return QString::fromUtf8(bytes, sqlite3_column_bytes(statement, column));
}

QByteArrayView Statement::bytes(int column) const
{
    sqlite3_stmt* statement = d->statement.get();
    const int type = sqlite3_column_type(statement, column);
    if (type != SQLITE_TEXT && type != SQLITE_BLOB)
        return {};
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
    return {bytes, sqlite3_column_bytes(statement, column)};
}

quint64 Statement::fingerprint(int column) const
{
    // Asked for once: rows of a whole library pass through here. One thread has the connection.
    sqlite3_value* value = sqlite3_column_value(d->statement.get(), column);
    const int type = sqlite3_value_type(value);
    switch (type) {
    case SQLITE_INTEGER:
        return mixed(quint64(sqlite3_value_int64(value)), type);
    case SQLITE_FLOAT:
        return mixed(std::bit_cast<quint64>(sqlite3_value_double(value)), type);
    case SQLITE_NULL:
        return mixed(0, type);
    default:
        const QByteArrayView content = bytes(column);
        return mixed(qHashBits(content.data(), size_t(content.size())), type);
    }
}

Value Statement::value(int column) const
{
    sqlite3_stmt* statement = d->statement.get();
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        return Value(integer(column));
    case SQLITE_FLOAT:
        return Value(number(column));
    case SQLITE_TEXT:
        return Value(text(column));
    case SQLITE_BLOB: {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
        return Value(QByteArray(bytes, sqlite3_column_bytes(statement, column)));
    }
    default:
        return {};
    }
}

Value Statement::value(int column, const ColumnType& type) const
{
    const int stored = sqlite3_column_type(d->statement.get(), column);
    if (stored == SQLITE_NULL)
        return {};
    if (type.isText() && stored != SQLITE_BLOB)
        return Value(text(column));
    if (stored != SQLITE_INTEGER && stored != SQLITE_FLOAT)
        return value(column);
    switch (type.kind) {
    case ColumnType::Kind::Single:
        return Value(float(number(column)));
    case ColumnType::Kind::Double:
        return Value(number(column));
    case ColumnType::Kind::Boolean:
        return Value(integer(column) != 0);
    default:
        return value(column);
    }
}

} // namespace database
