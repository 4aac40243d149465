#include "import/CellDate.h"

#include <cmath>

#include <QRegularExpression>

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

std::optional<QDate> validDay(int year, int month, int day)
{
    const QDate date(year, month, day);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

/// A day number, or eight digits that are year, month and day.
std::optional<QDate> dayOfNumber(double number)
{
    constexpr double lastDayNumber = 2958465; // 9999-12-31
    const double whole = std::floor(number);
    if (whole >= 0 && whole <= lastDayNumber)
        return QDate(1899, 12, 30).addDays(qint64(whole));
    if (whole == number && number >= 10000101 && number <= 99991231) {
        const int digits = int(number);
        return validDay(digits / 10000, digits / 100 % 100, digits % 100);
    }
    return std::nullopt;
}

/// Years of two digits are those from 1930 to 2029.
int fullYear(const QString& digits)
{
    const int year = digits.toInt();
    if (digits.size() > 2)
        return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<QDate> dayOfText(const QString& text)
{
    static const QRegularExpression form(
        uR"(^(\d{4}|\d{2})\s*[-/.年]\s*(\d{1,2})(?:\s*[-/.月]\s*(\d{1,2})?\s*日?)?(?:\s+\d{1,2}:\d{1,2}(?::\d{1,2})?)?$)"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (match.hasMatch()) {
        const QString day = match.captured(3);
        return validDay(fullYear(match.captured(1)), match.captured(2).toInt(),
                        day.isEmpty() ? 1 : day.toInt());
    }
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber ? dayOfNumber(number) : std::nullopt;
}

} // namespace

std::optional<QDate> cellDate(const Value& cell)
{
    if (cell.kind() == Value::Kind::Date)
        return cell.toDateTime().date();
    if (cell.isNumber())
        return dayOfNumber(cell.toDouble());
    if (cell.kind() == Value::Kind::Text)
        return dayOfText(cell.text().trimmed());
    return std::nullopt;
}

} // namespace importing
