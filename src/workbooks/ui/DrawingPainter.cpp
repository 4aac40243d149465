#include "workbooks/ui/DrawingPainter.h"

#include <algorithm>

#include <QPainter>

#include "platform/chart/paint/ChartPainter.h"
#include "workbooks/ui/CellDisplay.h"

namespace excel {

namespace {

// What may be painted around a drawing's place, in points: half of a thick line.
constexpr double aroundPlace = 10;

/// One call of DrawingPainter::paint.
class DrawingsOver
{
public:
    DrawingsOver(QPainter& painter, const Worksheet& sheet, const SheetPlaces& places,
                 const SheetLook& look, PictureImages& images)
        : m_painter(painter),
          m_sheet(sheet),
          m_geometry(sheet.geometry()),
          m_places(places),
          m_look(look),
          m_images(images)
    {
    }

    void paint(const Picture& picture);
    void paint(const Chart& chart);
    void paint(const DrawnLine& line);
    void paint(const TextLabel& label);

private:
    QColor inkAt(const QPointF& place) const;

    QPainter& m_painter;
    const Worksheet& m_sheet;
    const SheetGeometry& m_geometry;
    const SheetPlaces& m_places;
    const SheetLook& m_look;
    PictureImages& m_images;
    std::vector<QRectF> m_white; // the charts that were painted, in points
};

void DrawingsOver::paint(const Picture& picture)
{
    m_painter.drawImage(m_places.placeAt(m_geometry, picture.place()), m_images.imageOf(picture));
}

void DrawingsOver::paint(const Chart& chart)
{
    m_white.push_back(chart.place());
    chart::ChartPlace place;
    place.points = chart.place().size();
    place.frame = m_places.placeAt(m_geometry, chart.place());
    place.scale = m_look.scale;
    place.font = displayFont({});
    chart::paintChart(m_painter, filledChart(m_sheet, chart), place);
}

void DrawingsOver::paint(const DrawnLine& line)
{
    QPen pen(QColor::fromRgb(QRgb(line.color())), line.weight() * m_look.scale);
    pen.setCapStyle(Qt::FlatCap);
    if (line.dashStyle() == DashStyle::Dash)
        pen.setDashPattern({4, 3});
    m_painter.setPen(pen);
    m_painter.drawLine(m_places.placeAt(m_geometry, line.ends().p1()),
                       m_places.placeAt(m_geometry, line.ends().p2()));
}

void DrawingsOver::paint(const TextLabel& label)
{
    CellFormat format;
    format.fontSize = TextLabel::fontSize;
    m_painter.setFont(QFont(displayFont(format), m_painter.device()));
    m_painter.setPen(inkAt(label.place().topLeft()));
    m_painter.drawText(QRectF(m_places.placeAt(m_geometry, label.place().topLeft()), QSizeF(1, 1)),
                       Qt::TextDontClip | Qt::TextSingleLine, label.text());
}

/// Charts are white under a dark theme too.
QColor DrawingsOver::inkAt(const QPointF& place) const
{
    const bool onChart = std::any_of(m_white.begin(), m_white.end(),
                                     [&](const QRectF& area) { return area.contains(place); });
    return onChart ? QColor(Qt::black) : m_look.ink;
}

/// Where a drawing may be seen, in points: a label is as long as its text.
QRectF extentOf(const Drawing& drawing)
{
    QRectF extent = shapeOf(drawing).place();
    if (const auto* label = std::get_if<TextLabel>(&drawing)) {
        const double length = double(label->text().size()) * 2 * TextLabel::fontSize;
        extent = extent.united({extent.topLeft(), QSizeF(length, 2 * TextLabel::fontSize)});
    }
    return extent.adjusted(-aroundPlace, -aroundPlace, aroundPlace, aroundPlace);
}

} // namespace

void DrawingPainter::paint(QPainter& painter, const SheetPlaces& places, const SheetLook& look,
                           const CellRange& shown)
{
    if (m_drawings.empty())
        return;
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF area = m_geometry.place(shown);
    DrawingsOver painting(painter, m_sheet, places, look, m_images);
    for (const Drawing& drawing : m_drawings) {
        if (extentOf(drawing).intersects(area))
            std::visit([&](const auto& one) { painting.paint(one); }, drawing);
    }
    painter.restore();
}

QString DrawingPainter::chartTitleAt(int row, int column) const
{
    const QRectF cell = m_geometry.place({row, column, row, column});
    const auto found =
        std::find_if(m_drawings.rbegin(), m_drawings.rend(), [&](const Drawing& drawing) {
            return std::holds_alternative<Chart>(drawing)
                   && shapeOf(drawing).place().intersects(cell);
        });
    return found != m_drawings.rend() ? std::get<Chart>(*found).design().title : QString();
}

} // namespace excel
