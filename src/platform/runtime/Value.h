#pragma once

#include <variant>

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace runtime {

/// The content of a database field or of a workbook cell, with the type that it has there.
/// Null stands for a NULL field and for an empty cell.
class Value
{
public:
    enum class Kind { Null, Integer, Single, Double, Boolean, Date, Text, Error, Binary };

    Value() = default;
    Value(int number) : m_data(qint64{number}) {}
    Value(qint64 number) : m_data(number) {}
    Value(float number) : m_data(number) {}
    Value(double number) : m_data(number) {}
    Value(bool truth) : m_data(truth) {}
    Value(QDateTime moment) : m_data(std::move(moment)) {}
    Value(QString text) : m_data(std::move(text)) {}
    Value(QByteArray bytes) : m_data(std::move(bytes)) {}
    /// A pointer would pass for a truth value.
    Value(const void*) = delete;

    /// An error cell of a workbook; `text` is what the cell shows, such as "#N/A".
    static Value error(QString text);

    Kind kind() const { return static_cast<Kind>(m_data.index()); }
    bool isNull() const { return kind() == Kind::Null; }
    /// True for Integer, Single and Double.
    bool isNumber() const;

    /// The number of a numeric value as a double; Boolean is -1 or 0; anything else is 0.
    double toDouble() const;
    /// The bytes of a Binary value, empty for any other.
    QByteArray toBytes() const;
    /// Puts bytes behind those of a Binary value; any other one becomes these bytes.
    void append(const QByteArray& bytes);
    QDateTime toDateTime() const;

    /// The value joined to an empty text: Null gives "", a Single at most 7 significant digits, a
    /// Double 15, a date "2009-07-31" with " 08:30:00" behind it when it has a time of day.
    QString text() const;

    friend bool operator==(const Value&, const Value&) = default;

private:
    struct ErrorCell
    {
        QString text;
        friend bool operator==(const ErrorCell&, const ErrorCell&) = default;
    };

    // In the order of Kind.
    std::variant<std::monostate, qint64, float, double, bool, QDateTime, QString, ErrorCell,
                 QByteArray>
        m_data;
};

} // namespace runtime
