#include "platform/runtime/Value.h"

#include "platform/runtime/Numbers.h"

namespace runtime {

using namespace Qt::StringLiterals;

namespace {

QString dateText(const QDateTime& moment)
{
    const bool hasTime = moment.time() != QTime(0, 0);
    return moment.toString(hasTime ? u"yyyy-MM-dd HH:mm:ss" : u"yyyy-MM-dd");
}

} // namespace

Value Value::error(QString text)
{
    Value value;
    value.m_data = ErrorCell{std::move(text)};
    return value;
}

bool Value::isNumber() const
{
    return kind() == Kind::Integer || kind() == Kind::Single || kind() == Kind::Double;
}

double Value::toDouble() const
{
    switch (kind()) {
    case Kind::Integer:
        return double(std::get<qint64>(m_data));
    case Kind::Single:
        return std::get<float>(m_data);
    case Kind::Double:
        return std::get<double>(m_data);
    case Kind::Boolean:
        return std::get<bool>(m_data) ? -1 : 0;
    default:
        return 0;
    }
}

QByteArray Value::toBytes() const
{
    return kind() == Kind::Binary ? std::get<QByteArray>(m_data) : QByteArray();
}

void Value::append(const QByteArray& bytes)
{
    if (QByteArray* own = std::get_if<QByteArray>(&m_data))
        own->append(bytes);
    else
        m_data = bytes;
}

QDateTime Value::toDateTime() const
{
    return kind() == Kind::Date ? std::get<QDateTime>(m_data) : QDateTime();
}

QString Value::text() const
{
    switch (kind()) {
    case Kind::Integer:
        return QString::number(std::get<qint64>(m_data));
    case Kind::Single:
        return singleText(std::get<float>(m_data));
    case Kind::Double:
        return doubleText(std::get<double>(m_data));
    case Kind::Boolean:
        return std::get<bool>(m_data) ? u"True"_s : u"False"_s;
    case Kind::Date:
        return dateText(std::get<QDateTime>(m_data));
    case Kind::Text:
        return std::get<QString>(m_data);
    case Kind::Error:
        return std::get<ErrorCell>(m_data).text;
    case Kind::Null:
    case Kind::Binary:
        break;
    }
    return {};
}

} // namespace runtime
