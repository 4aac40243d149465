#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QRectF>
#include <QString>

#include "platform/runtime/Value.h"
#include "workbooks/model/CellFormat.h"

class QPaintDevice;
class QPainter;

namespace excel {

/// What a cell shows when it is wide enough: truth values as TRUE and FALSE, all else as its text.
QString displayText(const runtime::Value& value);

/// Where a cell's content stands. Without an alignment of its own: numbers and dates right, truth
/// values and errors in the middle, texts left.
Qt::Alignment displayAlignment(const CellFormat& format, const runtime::Value& value);

/// The cell's font, with the program's own behind it for signs that it lacks.
QFont displayFont(const CellFormat& format);

/// A number in at most `width`: with fewer decimals where it must be, and as "###" where not even
/// its whole part fits, since a number that is cut would read as another one.
QString fittingNumber(const runtime::Value& number, const QFontMetricsF& metrics, double width);

/// Space between a cell's edge and its text.
double textMargin(const QFontMetricsF& metrics);

/// Draws a cell's content into `area`; nothing is drawn outside `clip`'s left and right edges.
void drawCellText(QPainter& painter, const QRectF& area, const QRectF& clip,
                  const CellFormat& format, const runtime::Value& value, const QColor& ink);

/// A pen for a border that is `width` wide; without a line for LineStyle::None.
QPen borderPen(LineStyle style, const QColor& color, double width);

} // namespace excel
