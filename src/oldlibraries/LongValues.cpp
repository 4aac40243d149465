#include "oldlibraries/LongValues.h"

#include <algorithm>

#include "platform/runtime/ByteCursor.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using runtime::ByteCursor;

namespace {

constexpr quint32 inRowFlag = 0x80000000;
constexpr quint32 onePieceFlag = 0x40000000;
constexpr quint32 sizeBits = 0x3FFFFFFF;
/// What a value takes at least, with the row that points to it. Of the pieces of a longer one only
/// the last is short.
constexpr qint64 leastPieceBytes = 24;

} // namespace

LongValues::LongValues(PageFile& file, quint32 definitionPage)
    : m_file(file), m_rows(file, definitionPage, DataPage::ownedByLongValues, leastPieceBytes)
{
}

QByteArray LongValues::bytes(std::string_view inRow, PointedRows::Visit visit)
{
    if (inRow.empty())
        return QByteArray("");
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
        return fromPages(place, size, (word & onePieceFlag) != 0 ? Pieces::One : Pieces::Chain,
                         visit);
    } catch (const runtime::BytesCutOff&) {
        refuse();
    }
}

QByteArray LongValues::fromPages(RowPlace place, qsizetype size, Pieces pieces,
                                 PointedRows::Visit visit)
{
    QByteArray value("");
    value.reserve(qsizetype(std::min<qint64>(size, m_file.size())));
    while (value.size() < size) {
        m_rows.go(place, visit);
        ByteCursor piece(m_rows.bytes());
        if (pieces == Pieces::Chain)
            place = RowPlace::fromPointer(piece.u32());
        const qsizetype missing = size - value.size();
        if (piece.left() == 0 || (pieces == Pieces::One && piece.left() < missing))
            refuse();
        const std::string_view bytes = piece.take(std::min(piece.left(), missing));
        value.append(bytes.data(), qsizetype(bytes.size()));
    }
    return value;
}

void LongValues::refuse() const
{
    m_file.refuseDamaged(u"一段长文字或一张照片读不出"_s);
}

} // namespace oldlibraries
