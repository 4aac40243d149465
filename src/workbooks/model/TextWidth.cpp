#include "workbooks/model/TextWidth.h"

namespace excel {

int characterCells(QStringView text)
{
    constexpr char16_t firstWide = 0x2e80;
    int cells = 0;
    for (const QChar letter : text) {
        // The first half of a surrogate pair stands for both.
        if (!letter.isLowSurrogate())
            cells += letter.unicode() >= firstWide ? 2 : 1;
    }
    return cells;
}

} // namespace excel
