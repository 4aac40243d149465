#include "platform/chart/paint/FittedText.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

namespace chart {

namespace {

// No chart shows more of a text.
constexpr int longestText = 200;

QString shownText(const QString& text)
{
    return text.left(longestText).simplified();
}

/// How many characters a first line of this width takes; it ends between words where it can.
int lengthOfLine(const QString& text, const QFont& font, const QPaintDevice* device, double room)
{
    QTextLayout layout(text, font, device);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(room);
    layout.endLayout();
    return line.textLength();
}

} // namespace

QStringList twoLines(const QString& text, const QFont& font, const QPaintDevice* device,
                     double room)
{
    const QString shown = shownText(text);
    const QFontMetricsF metrics(font, device);
    if (shown.isEmpty() || metrics.horizontalAdvance(shown) <= room)
        return shown.isEmpty() ? QStringList() : QStringList(shown);
    const int first = lengthOfLine(shown, font, device, room);
    const QString rest = shown.mid(first).trimmed();
    return {shown.left(first).trimmed(), metrics.elidedText(rest, Qt::ElideRight, room)};
}

void drawFitted(QPainter& painter, const QRectF& area, const QString& text, const QFont& font)
{
    const QFontMetricsF metrics(font, painter.device());
    painter.setFont(font);
    painter.drawText(area, Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine,
                     metrics.elidedText(shownText(text), Qt::ElideRight, area.width()));
}

} // namespace chart
