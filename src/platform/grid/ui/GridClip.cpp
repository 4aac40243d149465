#include "platform/grid/ui/GridClip.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

constexpr int SpreadsheetDigits = 15;

QString quoted(QString text)
{
    const auto needsQuotes = [](QChar sign) {
        return sign == u'\t' || sign == u'\n' || sign == u'\r' || sign == u'"';
    };
    if (std::none_of(text.cbegin(), text.cend(), needsQuotes))
        return text;
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'"', u"\"\""_s);
    return u'"' + text + u'"';
}

bool isShortened(const QString& text)
{
    const bool digits = std::all_of(text.cbegin(), text.cend(),
                                    [](QChar sign) { return sign >= u'0' && sign <= u'9'; });
    return digits && text.size() > 1 && (text.front() == u'0' || text.size() > SpreadsheetDigits);
}

QString htmlCell(const QString& text)
{
    const QString start =
        isShortened(text) ? u"<td style=\"mso-number-format:'\\@'\">"_s : u"<td>"_s;
    QString inner = text.toHtmlEscaped();
    inner.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"<br>"_s);
    return start + inner + u"</td>"_s;
}

template <class Cell>
QStringList rowCells(const FlexGrid& grid, const QRect& block, int row, Cell cell)
{
    QStringList cells;
    for (int col = block.left(); col <= block.right(); ++col) {
        if (grid.ColWidth(col) != 0)
            cells.append(cell(grid.TextMatrix(row, col)));
    }
    return cells;
}

} // namespace

QString tabbedText(const FlexGrid& grid, const QRect& block)
{
    QString text;
    for (int row = block.top(); row <= block.bottom(); ++row)
        text += rowCells(grid, block, row, quoted).join(u'\t') + u"\r\n"_s;
    return text;
}

QString htmlTable(const FlexGrid& grid, const QRect& block)
{
    QString html = u"<table>"_s;
    for (int row = block.top(); row <= block.bottom(); ++row)
        html += u"<tr>"_s + rowCells(grid, block, row, htmlCell).join(QString()) + u"</tr>"_s;
    return html + u"</table>"_s;
}

} // namespace grid
