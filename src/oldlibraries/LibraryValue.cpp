#include "oldlibraries/LibraryValue.h"

#include <cmath>

#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

#include "oldlibraries/OldText.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Value.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

/// "12.5" of "12.5000", "0" of "-0".
QString withoutEndZeros(QString digits)
{
    if (digits.contains(u'.')) {
        while (digits.endsWith(u'0'))
            digits.chop(1);
        if (digits.endsWith(u'.'))
            digits.chop(1);
    }
    return digits == "-0"_L1 ? u"0"_s : digits;
}

/// From the year 100 to 9999, as the old engine's calendar.
bool isDate(double days)
{
    return days >= -657434 && days < 2958466;
}

/// Days since 1899-12-30 as "2009-07-31", with " 08:30:00" behind it where there is a time of day.
QString dateText(double days)
{
    constexpr int secondsOfADay = 86400;
    // The time of day counts upwards also in days before the first one.
    const double whole = std::trunc(days);
    const qint64 seconds = qRound64(std::abs(days - whole) * secondsOfADay);
    const QDateTime midnight(QDate(1899, 12, 30).addDays(qint64(whole)), QTime(0, 0),
                             QTimeZone::utc());
    return runtime::Value(midnight.addSecs(seconds)).text();
}

} // namespace

void LibraryValue::read(OldRows& rows, const OldColumn& column, int place)
{
    sort = Sort::Null;
    oddity = {};
    if (rows.isNull(place))
        return;
    switch (column.type) {
    case OldType::Boolean:
        sort = Sort::Whole;
        whole = rows.boolean(place) ? 1 : 0;
        return;
    case OldType::Byte:
    case OldType::Integer:
    case OldType::Long:
        sort = Sort::Whole;
        whole = rows.integer(place);
        return;
    case OldType::Single:
    case OldType::Double:
        return takeReal(rows.real(place));
    case OldType::Currency:
    case OldType::Decimal:
        return takeAmount(rows.text(place));
    case OldType::DateTime:
        return takeDate(rows.real(place));
    case OldType::Binary:
    case OldType::LongBinary:
        sort = Sort::Bytes;
        bytes = rows.bytes(place);
        return;
    case OldType::Text:
        return takeStoredText(rows.storedBytes(place), place);
    case OldType::Memo:
    case OldType::Guid:
        break;
    }
    takeText(rows.text(place));
}

void LibraryValue::takeReal(double number)
{
    sort = Sort::Real;
    real = number;
    if (!std::isfinite(number))
        oddity = std::isnan(number) ? QStringView(u"不是有效的数，新库里是空值。")
                                    : QStringView(u"无穷大，原样转入。");
}

void LibraryValue::takeAmount(const QString& digits)
{
    sort = Sort::Real;
    real = digits.toDouble() + 0.0; // no negative zero
    if (QString::number(real, 'f', QLocale::FloatingPointShortest) != withoutEndZeros(digits))
        oddity = u"位数太多，按最接近的数保存。";
}

void LibraryValue::takeStoredText(std::string_view stored, int place)
{
    if (size_t(place) >= m_knownTexts.size())
        m_knownTexts.resize(size_t(place) + 1);
    KnownText& known = m_knownTexts[size_t(place)];
    if (known.stored != stored) {
        takeText(storedText(stored));
        known = {std::string(stored), text, oddity};
        return;
    }
    sort = Sort::Text;
    text = known.text;
    oddity = known.oddity;
}

void LibraryValue::takeText(QString value)
{
    sort = Sort::Text;
    text = std::move(value);
    if (text.isValidUtf16())
        return;
    text = QString::fromUtf8(text.toUtf8());
    oddity = u"有不完整的字符，新库里换成了问号。";
}

void LibraryValue::takeDate(double days)
{
    takeText(isDate(days) ? dateText(days) : runtime::doubleText(days));
    if (!isDate(days))
        oddity = u"不是日期，按数字的文字保存。";
}

QString oldText(OldRows& rows, const OldColumn& column, int place)
{
    if (column.type == OldType::Single)
        return runtime::singleText(float(rows.real(place)));
    if (column.type == OldType::Double || column.type == OldType::DateTime)
        return runtime::doubleText(rows.real(place));
    return rows.text(place);
}

} // namespace oldlibraries
