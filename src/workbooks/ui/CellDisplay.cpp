#include "workbooks/ui/CellDisplay.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QPainter>

namespace excel {

using namespace Qt::StringLiterals;
using runtime::Value;

QString displayText(const Value& value)
{
    if (value.kind() == Value::Kind::Boolean)
        return value.toDouble() != 0 ? u"TRUE"_s : u"FALSE"_s;
    return value.text();
}

namespace {

Qt::AlignmentFlag generalAlignment(const Value& value)
{
    switch (value.kind()) {
    case Value::Kind::Integer:
    case Value::Kind::Single:
    case Value::Kind::Double:
    case Value::Kind::Date:
        return Qt::AlignRight;
    case Value::Kind::Boolean:
    case Value::Kind::Error:
        return Qt::AlignHCenter;
    default:
        return Qt::AlignLeft;
    }
}

Qt::AlignmentFlag across(HorizontalAlignment alignment, const Value& value)
{
    switch (alignment) {
    case HorizontalAlignment::Left:
        return Qt::AlignLeft;
    case HorizontalAlignment::Center:
        return Qt::AlignHCenter;
    case HorizontalAlignment::Right:
        return Qt::AlignRight;
    case HorizontalAlignment::General:
        break;
    }
    return generalAlignment(value);
}

Qt::AlignmentFlag down(VerticalAlignment alignment)
{
    switch (alignment) {
    case VerticalAlignment::Top:
        return Qt::AlignTop;
    case VerticalAlignment::Center:
        return Qt::AlignVCenter;
    case VerticalAlignment::Bottom:
        break;
    }
    return Qt::AlignBottom;
}

} // namespace

Qt::Alignment displayAlignment(const CellFormat& format, const Value& value)
{
    return across(format.horizontalAlignment, value) | down(format.verticalAlignment);
}

QFont displayFont(const CellFormat& format)
{
    const QFont standard = QApplication::font();
    QFont font = standard;
    font.setFamilies(QStringList(format.fontName) + standard.families());
    font.setPointSizeF(format.fontSize);
    font.setBold(format.bold);
    return font;
}

QString fittingNumber(const Value& number, const QFontMetricsF& metrics, double width)
{
    QString text = number.text();
    if (metrics.horizontalAdvance(text) <= width)
        return text;
    qsizetype decimals = text.contains(u'e') ? 0 : text.size() - 1 - text.lastIndexOf(u'.');
    if (!text.contains(u'.'))
        decimals = 0;
    while (decimals > 0) {
        text = QString::number(number.toDouble(), 'f', int(--decimals));
        if (metrics.horizontalAdvance(text) <= width)
            return text;
    }
    const double sign = metrics.horizontalAdvance(u'#');
    return QString(std::max(1, int(width / sign)), u'#');
}

double textMargin(const QFontMetricsF& metrics)
{
    return metrics.averageCharWidth() / 3;
}

void drawCellText(QPainter& painter, const QRectF& area, const QRectF& clip,
                  const CellFormat& format, const Value& value, const QColor& ink)
{
    if (value.isNull())
        return;
    const QFont font(displayFont(format), painter.device());
    const QFontMetricsF metrics(font, painter.device());
    const double margin = textMargin(metrics);
    const QRectF inner = area.adjusted(margin, 0, -margin, 0);
    QString text =
        value.isNumber() ? fittingNumber(value, metrics, inner.width()) : displayText(value);
    int flags = int(displayAlignment(format, value)) | Qt::TextDontClip;
    if (format.wrapText) {
        flags |= Qt::TextWordWrap | Qt::TextWrapAnywhere;
    } else {
        flags |= Qt::TextSingleLine;
        text.remove(u'\r').replace(u'\n', u' ');
    }
    painter.save();
    // Fonts taller than the row may reach over its edges a little, as spreadsheets let them.
    const double reach = format.wrapText ? 0 : metrics.height() / 4;
    painter.setClipRect(clip.adjusted(0, -reach, 0, reach), Qt::IntersectClip);
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(inner, flags, text);
    painter.restore();
}

QPen borderPen(LineStyle style, const QColor& color, double width)
{
    switch (style) {
    case LineStyle::Continuous:
        return QPen(color, width, Qt::SolidLine, Qt::SquareCap);
    case LineStyle::Dash:
        return QPen(color, width, Qt::DashLine, Qt::FlatCap);
    case LineStyle::None:
        break;
    }
    return QPen(Qt::NoPen);
}

} // namespace excel
