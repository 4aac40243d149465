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

DataPage::DataPage(PageFile& file, quint32 number) : m_page(file.page(number))
{
    const auto refuse = [&] { file.refuseDamaged(u"第 %1 页里的行读不出"_s.arg(number)); };
    if (m_page[0] != dataPageType)
        refuse();
    m_rowCount = qFromLittleEndian<quint16>(m_page.constData() + rowCountPlace);
    const int entriesEnd = entriesPlace + 2 * m_rowCount;
    if (entriesEnd > PageFile::pageSize)
        refuse();
    for (int row = 0; row < m_rowCount; ++row) {
        if (start(row) < entriesEnd || start(row) > end(row))
            refuse();
    }
}

quint32 DataPage::owner() const
{
    return qFromLittleEndian<quint32>(m_page.constData() + ownerPlace);
}

DataPage::Slot DataPage::slot(int row) const
{
    if ((entry(row) & deletedFlag) != 0)
        return Slot::Deleted;
    return (entry(row) & movedFlag) != 0 ? Slot::Moved : Slot::Row;
}

std::string_view DataPage::bytes(int row) const
{
    return {m_page.constData() + start(row), size_t(end(row) - start(row))};
}

int DataPage::entry(int row) const
{
    return qFromLittleEndian<quint16>(m_page.constData() + entriesPlace + 2 * row);
}

int DataPage::start(int row) const
{
    return entry(row) & startBits;
}

int DataPage::end(int row) const
{
    return row == 0 ? PageFile::pageSize : start(row - 1);
}

} // namespace oldlibraries
