#pragma once

#include <QRectF>
#include <QStringList>

class QFont;
class QPaintDevice;
class QPainter;

namespace chart {

/// A text in one line or two that are `room` dots wide at most, the second one cut with an ellipsis
/// where it must be. None for an empty text.
QStringList twoLines(const QString& text, const QFont& font, const QPaintDevice* device,
                     double room);

/// Draws a text in one line in the middle of an area, cut with an ellipsis where it is too long.
void drawFitted(QPainter& painter, const QRectF& area, const QString& text, const QFont& font);

} // namespace chart
