#include "oldlibraries/UsedPages.h"

#include "oldlibraries/DataPage.h"
#include "platform/runtime/ByteCursor.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using runtime::ByteCursor;

namespace {

enum class MapKind { Bits = 0, PagesOfBits = 1 };

constexpr int bitsPageType = 5;
constexpr int bitsPageHead = 4;
constexpr qint64 bitsPerPage = qint64(PageFile::pageSize - bitsPageHead) * 8;

/// Adds the numbers of the bits that are set; the first bit stands for page `first`.
void addPages(const PageFile& file, std::vector<quint32>& pages, qint64 first,
              std::string_view bits)
{
    for (size_t i = 0; i < bits.size(); ++i) {
        if (bits[i] == 0)
            continue;
        for (int bit = 0; bit < 8; ++bit) {
            if ((quint8(bits[i]) >> bit & 1) == 0)
                continue;
            const qint64 number = first + qint64(i) * 8 + bit;
            if (number >= file.pageCount())
                file.refuseCutOff();
            pages.push_back(quint32(number));
        }
    }
}

/// Bits for more pages than fit on one, each such page for as many as it holds.
void addPagesOfBits(PageFile& file, std::vector<quint32>& pages, ByteCursor numbers)
{
    for (qint64 first = 0; numbers.left() >= 4; first += bitsPerPage) {
        const quint32 number = numbers.u32();
        if (number == 0)
            continue;
        const QByteArray page = file.page(number);
        if (page[0] != bitsPageType)
            file.refuseDamaged(u"第 %1 页不是页的目录"_s.arg(number));
        addPages(file, pages, first,
                 std::string_view(page.constData(), PageFile::pageSize).substr(bitsPageHead));
    }
}

} // namespace

std::vector<quint32> usedPages(PageFile& file, RowPlace map)
{
    const DataPage page(file, map.page);
    if (map.row >= page.rowCount() || page.slot(map.row) != DataPage::Slot::Row)
        file.refuseDamaged(u"页的目录读不出"_s);
    const std::string_view bytes = page.bytes(map.row);
    std::vector<quint32> pages;
    try {
        ByteCursor cursor(bytes);
        const int kind = cursor.u8();
        if (kind == int(MapKind::Bits)) {
            const qint64 first = cursor.u32();
            addPages(file, pages, first, cursor.take(cursor.left()));
        } else if (kind == int(MapKind::PagesOfBits)) {
            addPagesOfBits(file, pages, cursor);
        } else {
            file.refuseDamaged(u"页的目录读不出"_s);
        }
    } catch (const runtime::BytesCutOff&) {
        file.refuseDamaged(u"页的目录读不出"_s);
    }
    return pages;
}

} // namespace oldlibraries
