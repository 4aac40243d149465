#include "oldlibraries/DataPage.h"

#include <QtEndian>

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

constexpr int dataPageType = 1;
constexpr int ownerPlace = 4;
constexpr int rowCountPlace = 12;
constexpr int entriesPlace = 14;

constexpr int deletedFlag = 0x8000;
constexpr int movedFlag = 0x4000;
constexpr int startBits = 0x1FFF;

} // namespace

DataPage::DataPage(const PageFile& file, quint32 number, const QByteArray& page)
    : m_file(&file), m_number(number), m_page(page)
{
    if (!isDataPage(m_page))
        refuse();
    m_rowCount = qFromLittleEndian<quint16>(m_page.constData() + rowCountPlace);
    if (entriesEnd() > PageFile::pageSize)
        refuse();
}

bool DataPage::isDataPage(const QByteArray& page)
{
    return page[0] == dataPageType;
}

quint32 DataPage::owner() const
{
    return qFromLittleEndian<quint32>(m_page.constData() + ownerPlace);
}

DataPage::Slot DataPage::slot(int row) const
{
    if ((entry(row) & deletedFlag) != 0)
        return Slot::Deleted;
    return isPointer(row) ? Slot::Moved : Slot::Row;
}

bool DataPage::isPointer(int row) const
{
    return (entry(row) & movedFlag) != 0;
}

std::string_view DataPage::bytes(int row) const
{
    const int from = start(row);
    const int to = end(row);
    if (from < entriesEnd() || from > to || to > PageFile::pageSize)
        refuse();
    return {m_page.constData() + from, size_t(to - from)};
}

void DataPage::checkRows() const
{
    for (int row = 0; row < m_rowCount; ++row)
        bytes(row);
}

int DataPage::entry(int row) const
{
    return qFromLittleEndian<quint16>(m_page.constData() + entriesPlace + qsizetype(2) * row);
}

int DataPage::start(int row) const
{
    return entry(row) & startBits;
}

int DataPage::end(int row) const
{
    return row == 0 ? PageFile::pageSize : start(row - 1);
}

int DataPage::entriesEnd() const
{
    return entriesPlace + 2 * m_rowCount;
}

void DataPage::refuse() const
{
    m_file->refuseDamaged(u"第 %1 页里的行读不出"_s.arg(m_number));
}

} // namespace oldlibraries
