#include "platform/widgets/CellClip.h"

#include <algorithm>

#include <QMimeData>

#include "platform/runtime/FormulaText.h"

namespace widgets {

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

bool needsMark(const QString& text)
{
    return isShortened(text) || runtime::looksLikeFormula(text);
}

QString htmlCell(const QString& text)
{
    const QString start = needsMark(text) ? u"<td style=\"mso-number-format:'\\@'\">"_s : u"<td>"_s;
    QString inner = text.toHtmlEscaped();
    inner.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"<br>"_s);
    return start + inner + u"</td>"_s;
}

} // namespace

QString tabbedText(const std::vector<QStringList>& rows)
{
    QString text;
    for (const QStringList& row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (i > 0)
                text += u'\t';
            text += quoted(row[i]);
        }
        text += u"\r\n"_s;
    }
    return text;
}

QString htmlTable(const std::vector<QStringList>& rows)
{
    QString html = u"<table>"_s;
    for (const QStringList& row : rows) {
        html += u"<tr>"_s;
        for (const QString& cell : row)
            html += htmlCell(cell);
        html += u"</tr>"_s;
    }
    return html + u"</table>"_s;
}

QMimeData* cellsForClipboard(const std::vector<QStringList>& rows)
{
    auto* cells = new QMimeData;
    cells->setText(tabbedText(rows));
    cells->setHtml(htmlTable(rows));
    return cells;
}

} // namespace widgets
