#include "support/OldRowBytes.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include <QUuid>

#include "support/OldFilePages.h"

namespace support {

using oldlibraries::OldColumn;
using oldlibraries::OldType;
using runtime::Value;

namespace {

constexpr QByteArrayView compressedMark = "\xFF\xFE";

bool isOneByte(QChar letter)
{
    return letter.unicode() > 0 && letter.unicode() <= 0xFF;
}

QByteArray plainText(const QString& text)
{
    QByteArray bytes(2 * text.size(), Qt::Uninitialized);
    qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data());
    return bytes;
}

QByteArray mixedText(const QString& text)
{
    QByteArray bytes = compressedMark.toByteArray();
    bool inOneByte = true;
    for (const QChar letter : text) {
        if (isOneByte(letter) != inOneByte) {
            inOneByte = !inOneByte;
            bytes.append('\0');
        }
        bytes.append(inOneByte ? QByteArray(1, letter.toLatin1()) : plainText(letter));
    }
    return bytes;
}

/// False where the end mark of a stretch would stand within a character.
bool canBeMixed(const QString& text)
{
    return std::none_of(text.begin(), text.end(),
                        [](QChar letter) { return (letter.unicode() & 0xFF) == 0; });
}

qint64 decimalUnits(const OldColumn& column, const Value& value)
{
    if (value.kind() == Value::Kind::Text)
        return value.text().remove(u'.').toLongLong();
    return std::llround(value.toDouble() * std::pow(10.0, column.scale));
}

QByteArray decimalBytes(qint64 units)
{
    QByteArray bytes(1, units < 0 ? '\x80' : '\0');
    append(bytes, quint64(0));
    const quint64 size = units < 0 ? quint64(0) - quint64(units) : quint64(units);
    append(bytes, quint32(size >> 32));
    append(bytes, quint32(size));
    return bytes;
}

QByteArray guidBytes(const QString& text)
{
    const QUuid guid(text);
    QByteArray bytes;
    append(bytes, quint32(guid.data1));
    append(bytes, quint16(guid.data2));
    append(bytes, quint16(guid.data3));
    bytes.append(reinterpret_cast<const char*>(guid.data4), sizeof guid.data4);
    return bytes;
}

double days(const Value& value)
{
    if (value.kind() != Value::Kind::Date)
        return value.toDouble();
    const QDateTime moment = value.toDateTime();
    constexpr double millisecondsOfDay = 86400000;
    return double(QDate(1899, 12, 30).daysTo(moment.date()))
           + moment.time().msecsSinceStartOfDay() / millisecondsOfDay;
}

template <typename Number> QByteArray numberBytes(Number number)
{
    QByteArray bytes;
    append(bytes, number);
    return bytes;
}

void setMask(QByteArray& row, qsizetype maskBegin, int column)
{
    const qsizetype place = maskBegin + column / 8;
    row[place] = char(row[place] | 1 << column % 8);
}

/// The parts of changing length, and behind them where each begins, the last one first.
void appendVariable(QByteArray& row, int count, const std::vector<OldPart>& parts)
{
    std::vector<const QByteArray*> ordered(size_t(count), nullptr);
    for (const OldPart& part : parts) {
        if (!part.column->isFixed && !part.isNull)
            ordered[size_t(part.column->place)] = &part.bytes;
    }
    std::vector<quint16> begins;
    for (const QByteArray* bytes : ordered) {
        begins.push_back(quint16(row.size()));
        if (bytes != nullptr)
            row.append(*bytes);
    }
    begins.push_back(quint16(row.size()));
    for (size_t i = begins.size(); i > 0; --i)
        append(row, begins[i - 1]);
    append(row, quint16(count));
}

} // namespace

QByteArray oldText(const QString& text, OldTextForm form)
{
    if (form == OldTextForm::Mixed && canBeMixed(text))
        return mixedText(text);
    if (form == OldTextForm::Compressed && !text.isEmpty()
        && std::all_of(text.begin(), text.end(), isOneByte))
        return compressedMark + text.toLatin1();
    return plainText(text);
}

int oldFixedSize(const OldColumn& column)
{
    switch (column.type) {
    case OldType::Boolean:
        return 0;
    case OldType::Text:
        return 2 * column.length;
    case OldType::Binary:
        return column.length;
    case OldType::Guid:
        return 16;
    default:
        return int(oldValue(column, 0).size());
    }
}

QByteArray oldValue(const OldColumn& column, const Value& value)
{
    switch (column.type) {
    case OldType::Byte:
        return numberBytes(quint8(value.toDouble()));
    case OldType::Integer:
        return numberBytes(qint16(value.toDouble()));
    case OldType::Long:
        return numberBytes(qint32(value.toDouble()));
    case OldType::Currency:
        return numberBytes(qint64(std::llround(value.toDouble() * 10000)));
    case OldType::Single:
        return numberBytes(std::bit_cast<quint32>(float(value.toDouble())));
    case OldType::Double:
        return numberBytes(std::bit_cast<quint64>(value.toDouble()));
    case OldType::DateTime:
        return numberBytes(std::bit_cast<quint64>(days(value)));
    case OldType::Guid:
        return guidBytes(value.text());
    case OldType::Decimal:
        return decimalBytes(decimalUnits(column, value));
    default:
        return value.toBytes();
    }
}

QByteArray oldRow(const OldRowShape& shape, const std::vector<OldPart>& parts)
{
    constexpr int fixedBegin = 2;
    QByteArray row(fixedBegin + shape.fixedSize, '\0');
    put(row, 0, quint16(shape.columns));
    for (const OldPart& part : parts) {
        if (part.column->isFixed && !part.isNull)
            row.replace(fixedBegin + part.column->place, part.bytes.size(), part.bytes);
    }
    if (shape.variableColumns > 0)
        appendVariable(row, shape.variableColumns, parts);
    const qsizetype maskBegin = row.size();
    row.append(QByteArray((shape.columns + 7) / 8, '\0'));
    for (const OldPart& part : parts) {
        if (part.isTrue || (!part.isNull && part.column->type != OldType::Boolean))
            setMask(row, maskBegin, part.column->number);
    }
    return row;
}

} // namespace support
