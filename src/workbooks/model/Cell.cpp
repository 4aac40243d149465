#include "workbooks/model/Cell.h"

#include <cmath>

namespace excel {

using runtime::Value;

namespace {

// Whole numbers beyond this are not all doubles.
constexpr double largestWhole = 1LL << 53;

} // namespace

const Value* CellStore::keep(Value value)
{
    m_values.push_back(std::move(value));
    return &m_values.back();
}

Value Cell::value() const
{
    switch (kind()) {
    case Kind::Null:
        return {};
    case Kind::Integer:
        return m_isStored ? *m_value : Value(qint64(m_number));
    case Kind::Single:
        return float(m_number);
    case Kind::Double:
        return m_number;
    case Kind::Boolean:
        return m_number != 0;
    case Kind::Text:
        return *m_text;
    default:
        return *m_value;
    }
}

void Cell::setValue(const Value& value, CellStore& store)
{
    const Kind kind = value.kind();
    m_kind = quint8(kind);
    m_isStored = false;
    if (kind == Kind::Double) {
        m_number = value.toDouble();
        return;
    }
    const bool isNumber = kind == Kind::Null || kind == Kind::Boolean || value.isNumber();
    const bool isExact = kind != Kind::Integer || std::abs(value.toDouble()) < largestWhole;
    if (kind == Kind::Text) {
        m_text = store.keep(value.text());
    } else if (isNumber && isExact) {
        m_number = value.toDouble();
    } else {
        m_isStored = true;
        m_value = store.keep(value);
    }
}

void Cell::setShared(const QString& text)
{
    m_kind = quint8(Kind::Text);
    m_isStored = false;
    m_text = &text;
}

} // namespace excel
