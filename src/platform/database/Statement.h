#pragma once

#include <memory>
#include <span>
#include <vector>

#include <QString>

#include "platform/database/ColumnType.h"
#include "platform/database/UserGuard.h"

namespace database {

class Connection;

/// A prepared statement with values in the places of its question marks.
///
///     Statement& s = conn.prepared("select ID from 信息表 where 班级=? and 学号=?");
///     s.bind({班级, 学号});
///     while (s.step()) s.value(0);
class Statement
{
public:
    /// For statements that are not kept by the connection. Throws Error.
    Statement(Connection& connection, const QString& sql, Trust trust = Trust::Program);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Starts the statement anew with these values.
    void bind(const std::vector<runtime::Value>& values);

    /// As bind, for statements whose texts were written between apostrophes before they were bound:
    /// a text that holds one is refused as a wrong statement. Throws Error.
    void bindQuoted(const std::vector<runtime::Value>& values);

    /// Starts anew; values follow by the calls below, places counted from 1, and stay until
    /// replaced.
    void reset();
    void bindValue(int place, const runtime::Value& value);
    void bindNull(int place);
    void bindInteger(int place, qint64 number);
    void bindDouble(int place, double number);
    /// Numbers for the places from `first` on; NaN is NULL.
    void bindNumbers(int first, std::span<const double> numbers);

    /// True if it stands on a row, false at the end. Throws Error. A writing statement is refused
    /// when the connection cannot be written.
    bool step();
    /// Runs a writing statement to its end and gives the number of rows that it changed.
    int run();

    /// Ends the use of the rows, so that no lock is held; step() gives false until values are bound
    /// or the statement is started anew.
    void finish();

    /// False for a statement that could write.
    bool readsOnly() const;

    int columnCount() const;
    QString columnName(int column) const;
    /// The declaration of the column in its table; "" for a computed one.
    QString columnDeclaration(int column) const;
    bool isNull(int column) const;
    double number(int column) const;
    qint64 integer(int column) const;
    /// The numbers of the columns from `first` on; NULL is NaN. What is no number, or none that can
    /// be reckoned with, is NaN too: true if there is such a one.
    bool readNumbers(int first, std::span<double> numbers) const;
    /// Length in bytes of a text or picture; 0 for anything else.
    qint64 size(int column) const;
    QString text(int column) const;
    /// The bytes of a text (as UTF-8) or a picture, which stand until the next row; none of
    /// anything else.
    QByteArrayView bytes(int column) const;
    /// A number that differs where the stored values do, by their kinds or by what they hold; good
    /// for comparing within one run of the program.
    quint64 fingerprint(int column) const;
    /// The value with the type that the engine stores.
    runtime::Value value(int column) const;
    /// The value with the type that the column declares; one of another sort comes as it is stored.
    runtime::Value value(int column, const ColumnType& type) const;

private:
    /// The checks ahead of the first row.
    void begin();
    [[noreturn]] void fail();
    /// Ends a typed statement that runs too long or that the user stopped.
    [[noreturn]] void stop();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace database
