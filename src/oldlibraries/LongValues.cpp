#include "oldlibraries/LongValues.h"

#include "oldlibraries/DataPage.h"
#include "platform/runtime/ByteCursor.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using runtime::ByteCursor;

namespace {

constexpr quint32 inRowFlag = 0x80000000;
constexpr quint32 onePieceFlag = 0x40000000;
constexpr quint32 sizeBits = 0x3FFFFFFF;

} // namespace

QByteArray LongValues::bytes(std::string_view inRow)
{
    try {
        ByteCursor cursor(inRow);
        const quint32 word = cursor.u32();
        const qsizetype size = word & sizeBits;
        const RowPlace place = RowPlace::fromPointer(cursor.u32());
        cursor.skip(4);
        if ((word & inRowFlag) != 0) {
            const std::string_view bytes = cursor.take(size);
            return QByteArray(bytes.data(), qsizetype(bytes.size()));
        }
        return fromPages(place, size, (word & onePieceFlag) == 0);
    } catch (const runtime::BytesCutOff&) {
        refuse();
    }
}

QByteArray LongValues::fromPages(RowPlace place, qsizetype size, bool isChain)
{
    m_bytesLeft -= size;
    if (m_bytesLeft < 0)
        refuse();
    QByteArray value;
    value.reserve(size);
    while (value.size() < size) {
        const DataPage page(m_file, place.page);
        if (page.owner() != DataPage::ownedByLongValues || place.row >= page.rowCount())
            refuse();
        ByteCursor piece(page.bytes(place.row));
        if (isChain)
            place = RowPlace::fromPointer(piece.u32());
        const std::string_view bytes = piece.take(piece.left());
        if (bytes.empty() || (!isChain && qsizetype(bytes.size()) < size))
            refuse();
        value.append(bytes.data(), qsizetype(bytes.size()));
    }
    if (value.size() > size)
        refuse();
    return value;
}

void LongValues::refuse() const
{
    m_file.refuseDamaged(u"一段长文字或一张照片读不出"_s);
}

} // namespace oldlibraries
