#include "oldlibraries/RowValues.h"

#include <cmath>

#include <QDateTime>
#include <QTimeZone>

#include "platform/runtime/Numbers.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

/// Days since 1899-12-30; the time of day counts upwards also in days before. A number that is no
/// day of the calendar stays a number.
QString dateText(double days)
{
    constexpr double firstDay = -657434;  // the year 100
    constexpr double endOfDays = 2958466; // the year 10000
    constexpr int secondsOfADay = 86400;
    if (!(days >= firstDay && days < endOfDays))
        return runtime::doubleText(days);
    const double whole = std::trunc(days);
    const qint64 seconds = qRound64(std::abs(days - whole) * secondsOfADay);
    const QDateTime midnight(QDate(1899, 12, 30).addDays(qint64(whole)), QTime(0, 0),
                             QTimeZone::utc());
    return Value(midnight.addSecs(seconds)).text();
}

} // namespace

Value libraryValue(OldRows& rows, const OldColumn& column, int place)
{
    if (rows.isNull(place))
        return {};
    switch (column.type) {
    case OldType::Boolean:
        return Value(qint64(rows.boolean(place)));
    case OldType::Byte:
    case OldType::Integer:
    case OldType::Long:
        return Value(rows.integer(place));
    case OldType::Single:
    case OldType::Double:
    case OldType::Currency:
        return Value(rows.real(place));
    case OldType::Decimal:
        return Value(rows.text(place).toDouble());
    case OldType::DateTime:
        return Value(dateText(rows.real(place)));
    case OldType::Binary:
    case OldType::LongBinary:
        return Value(rows.bytes(place));
    case OldType::Text:
    case OldType::Memo:
    case OldType::Guid:
        break;
    }
    return Value(rows.text(place));
}

bool isStored(const Value& value, const database::Statement& row, int column)
{
    if (row.isNull(column))
        return value.isNull() || (value.isNumber() && std::isnan(value.toDouble()));
    if (value.isNumber())
        return row.number(column) == value.toDouble();
    const Value stored = row.value(column);
    if (value.kind() == Value::Kind::Text)
        return stored.kind() == Value::Kind::Text
               && stored.text().toUtf8() == value.text().toUtf8();
    return stored == value;
}

QString oddity(const Value& value)
{
    if (value.isNumber() && std::isnan(value.toDouble()))
        return u"不是数，新库里为空"_s;
    if (value.isNumber() && std::isinf(value.toDouble()))
        return u"无穷大，照原样保存"_s;
    if (value.kind() == Value::Kind::Text && !value.text().isValidUtf16())
        return u"有半个字符，新库里换成了�"_s;
    return {};
}

} // namespace oldlibraries
