#include "workbooks/readers/XlsRecords.h"

namespace excel {

namespace {

constexpr int endOfStream = -1;

} // namespace

int XlsStream::peekType() const
{
    runtime::ByteCursor ahead = m_cursor;
    return ahead.left() >= 4 ? ahead.u16() : endOfStream;
}

std::string_view XlsStream::takeRecord()
{
    m_budget.takeRecords(1);
    m_cursor.skip(2);
    const int length = m_cursor.u16();
    return m_cursor.take(length);
}

bool XlsStream::next(XlsRecord& into)
{
    into.type = peekType();
    if (into.type == endOfStream)
        return false;
    into.bytes = takeRecord();
    into.pieces.clear();
    into.pieces.push_back(into.bytes);
    while (peekType() == record::continued)
        into.pieces.push_back(takeRecord());
    return true;
}

} // namespace excel
