#include "Drawing.h"

using namespace Qt::StringLiterals;

namespace {

const QColor deepGreen(0x1f, 0x6b, 0x45);
const QColor page(0xfd, 0xfb, 0xf2);
const QColor shadedPage(0xee, 0xe8, 0xd6);
const QColor cover(0x14, 0x4a, 0x30);
const QColor ruling(0x9a, 0xc2, 0xa6);

QString number(double value)
{
    return QString::number(value, 'f', 2);
}

/// The outline in the words of SVG; Qt keeps a curve as three elements.
QString pathData(const QPainterPath& path)
{
    QString data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo())
            data += u'M';
        else if (element.isLineTo())
            data += u'L';
        else if (element.type == QPainterPath::CurveToElement)
            data += u'C';
        data += number(element.x) + u' ' + number(element.y) + u' ';
    }
    return data + u'Z';
}

/// One side of one tier: `side` is -1 for the left and 1 for the right.
QPainterPath tierHalf(const QPointF& top, double height, double halfWidth, int side)
{
    const double tip = top.x() + side * halfWidth;
    const double bottom = top.y() + height;
    QPainterPath half(top);
    half.quadTo(top.x() + side * halfWidth * 0.34, top.y() + height * 0.66, tip, bottom);
    half.quadTo(top.x() + side * halfWidth * 0.45, bottom - height * 0.03, top.x(),
                bottom - height * 0.16);
    half.closeSubpath();
    return half;
}

/// One page: its upper edge swings up from the fold.
QPainterPath pageOutline(const QPointF& fold, double width, double height, int side)
{
    const double outer = fold.x() + side * width;
    const double lift = height * 0.22;
    QPainterPath outline(fold);
    outline.quadTo(fold.x() + side * width * 0.45, fold.y() - lift, outer, fold.y() - lift * 0.55);
    outline.lineTo(outer, fold.y() - lift * 0.55 - height);
    outline.quadTo(fold.x() + side * width * 0.45, fold.y() - lift - height, fold.x(),
                   fold.y() - height);
    outline.closeSubpath();
    return outline;
}

/// A ruled line of a page, following its upper edge.
QPainterPath ruledLine(const QPointF& fold, double width, double height, double share, int side)
{
    const double y = fold.y() - height * share;
    const double lift = height * 0.22;
    const double thick = height * 0.06;
    const double from = fold.x() + side * width * 0.16;
    const double to = fold.x() + side * width * 0.88;
    QPainterPath line(QPointF(from, y - lift * 0.45));
    line.quadTo(fold.x() + side * width * 0.5, y - lift * 0.95, to, y - lift * 0.62);
    line.lineTo(to, y - lift * 0.62 - thick);
    line.quadTo(fold.x() + side * width * 0.5, y - lift * 0.95 - thick, from,
                y - lift * 0.45 - thick);
    line.closeSubpath();
    return line;
}

} // namespace

void Drawing::paint(QPainter& painter) const
{
    for (const Shape& shape : m_shapes)
        painter.fillPath(shape.outline, shape.fill);
}

QImage Drawing::image(const QSize& size) const
{
    // Drawn large and scaled down, which is smoother than the painter's own edges.
    constexpr int larger = 4;
    QImage large(size * larger, QImage::Format_ARGB32_Premultiplied);
    large.fill(Qt::transparent);
    QPainter painter(&large);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(double(large.width()) / m_size.width(), double(large.height()) / m_size.height());
    paint(painter);
    painter.end();
    return large.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_ARGB32);
}

QByteArray Drawing::svg(const QString& title) const
{
    QString text = u"<svg xmlns=\"http://www.w3.org/2000/svg\" "
                   "viewBox=\"0 0 %1 %2\">\n<title>%3</title>\n"_s.arg(m_size.width())
                       .arg(m_size.height())
                       .arg(title);
    for (const Shape& shape : m_shapes) {
        text += u"<path fill=\"%1\" d=\"%2\"/>\n"_s.arg(shape.fill.name(), pathData(shape.outline));
    }
    return (text + u"</svg>\n"_s).toUtf8();
}

void addSpruce(Drawing& drawing, const QPointF& foot, double height, const SpruceColors& colors)
{
    const auto at = [&](double share) { return QPointF(foot.x(), foot.y() - height * share); };
    QPainterPath trunk;
    trunk.addRect(foot.x() - height * 0.035, foot.y() - height * 0.2, height * 0.07, height * 0.2);
    drawing.add(trunk, colors.trunk);
    struct Tier
    {
        double top;
        double height;
        double halfWidth;
    };
    for (const Tier& tier : {Tier{0.64, 0.54, 0.33}, Tier{0.84, 0.45, 0.25}, Tier{1, 0.34, 0.17}}) {
        drawing.add(tierHalf(at(tier.top), tier.height * height, tier.halfWidth * height, -1),
                    colors.lit);
        drawing.add(tierHalf(at(tier.top), tier.height * height, tier.halfWidth * height, 1),
                    colors.shaded);
    }
}

void addBook(Drawing& drawing, const QPointF& foot, double width)
{
    const double half = width / 2;
    const double height = width * 0.26;
    const QPointF fold(foot.x(), foot.y() - width * 0.045);
    for (const int side : {-1, 1})
        drawing.add(pageOutline(foot, half * 1.05, height, side), cover);
    drawing.add(pageOutline(fold, half, height, -1), page);
    drawing.add(pageOutline(fold, half, height, 1), shadedPage);
    for (const int side : {-1, 1}) {
        for (const double share : {0.22, 0.46, 0.7})
            drawing.add(ruledLine(fold, half, height, share, side), ruling);
    }
}

Drawing icon()
{
    Drawing drawing(QSize(256, 256));
    QPainterPath ground;
    ground.addRoundedRect(8, 8, 240, 240, 52, 52);
    drawing.add(ground, deepGreen);
    addSpruce(drawing, QPointF(128, 176), 152,
              {QColor(0xc4, 0xe8, 0xc6), QColor(0x8f, 0xcf, 0xa0), QColor(0xb9, 0x8b, 0x5e)});
    addBook(drawing, QPointF(128, 228), 184);
    return drawing;
}
