#include "import/CellDate.h"

#include <cmath>

#include <QRegularExpression>

#include "workbooks/model/DayNumber.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

// Up to 2100-12-31. Beyond stands what was no day number: 200909, a year and a month.
constexpr double dayNumbers = 73416;

std::optional<QDateTime> validMoment(const QDate& day, const QTime& time = QTime(0, 0))
{
    if (!day.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(day, time, Qt::UTC);
}

/// A day number with the time of day as its fraction, or eight digits that are year, month and day.
std::optional<QDateTime> momentOfNumber(double number)
{
    if (number >= 0 && number < dayNumbers)
        return QDateTime(excel::dayZero(), QTime(0, 0), Qt::UTC)
            .addSecs(std::llround(number * excel::secondsPerDay));
    if (std::floor(number) == number && number >= 10000101 && number <= 99991231) {
        const int digits = int(number);
        return validMoment(QDate(digits / 10000, digits / 100 % 100, digits % 100));
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

/// The moment of a text's parts; what is missing is the first day of the month, and midnight.
std::optional<QDateTime> momentOfParts(const QRegularExpressionMatch& match)
{
    const auto part = [&match](const QString& name) { return match.captured(name).toInt(); };
    const int day = match.captured(u"day"_s).isEmpty() ? 1 : part(u"day"_s);
    return validMoment(QDate(fullYear(match.captured(u"year"_s)), part(u"month"_s), day),
                       QTime(part(u"hour"_s), part(u"minute"_s), part(u"second"_s)));
}

std::optional<QDateTime> momentOfText(const QString& text)
{
    static const QString time =
        uR"((?:\s+(?<hour>\d{1,2}):(?<minute>\d{1,2})(?::(?<second>\d{1,2}))?)?$)"_s;
    static const QRegularExpression yearFirst(
        uR"(^(?<year>\d{4}|\d{2})\s*[-/.年]\s*(?<month>\d{1,2})(?:\s*[-/.月]\s*(?<day>\d{1,2})?\s*日?)?)"_s
        + time);
    static const QRegularExpression yearLast(
        uR"(^(?<month>\d{1,2})/(?<day>\d{1,2})/(?<year>\d{4}))"_s + time);
    for (const QRegularExpression& form : {yearFirst, yearLast}) {
        const QRegularExpressionMatch match = form.match(text);
        if (match.hasMatch())
            return momentOfParts(match);
    }
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber ? momentOfNumber(number) : std::nullopt;
}

} // namespace

std::optional<QDateTime> cellDate(const Value& cell)
{
    if (cell.kind() == Value::Kind::Date) {
        const QDate day = cell.toDateTime().date();
        if (double(excel::dayZero().daysTo(day)) >= dayNumbers)
            return std::nullopt;
        return validMoment(day, cell.toDateTime().time());
    }
    if (cell.isNumber())
        return momentOfNumber(cell.toDouble());
    if (cell.kind() == Value::Kind::Text)
        return momentOfText(cell.text().trimmed());
    return std::nullopt;
}

} // namespace importing
