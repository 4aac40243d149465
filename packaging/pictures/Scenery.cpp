#include "Scenery.h"

#include <cmath>

#include <QLinearGradient>
#include <QRandomGenerator>

#include "Drawing.h"

using namespace Qt::StringLiterals;

namespace {

/// A colour between two others; 0 gives the first, 1 the second.
QColor between(const QColor& first, const QColor& second, double share)
{
    const auto mix = [&](int a, int b) { return int(std::lround(a + (b - a) * share)); };
    return QColor(mix(first.red(), second.red()), mix(first.green(), second.green()),
                  mix(first.blue(), second.blue()));
}

/// A chain of hills across the picture, its height above the lower edge at each place.
struct Hills
{
    double base;
    double swing;
    double phase;

    double top(double x, const QSize& size) const
    {
        const double turn = x / size.width() * 6.28;
        const double wave = std::sin(turn * 0.9 + phase) + 0.45 * std::sin(turn * 2.1 + phase * 2);
        return size.height() * (1 - base - swing * wave);
    }
};

void paintHills(QPainter& painter, const Hills& hills, const QSize& size, const QColor& color,
                const QColor& mist)
{
    QPainterPath outline(QPointF(0, size.height()));
    for (int x = 0; x <= size.width(); x += 8)
        outline.lineTo(x, hills.top(x, size));
    outline.lineTo(size.width(), size.height());
    outline.closeSubpath();
    // Mist gathers in the valley in front of each chain.
    QLinearGradient fill(0, size.height() * (1 - hills.base - hills.swing), 0,
                         size.height() * (1 - hills.base + 0.34));
    fill.setColorAt(0, color);
    fill.setColorAt(1, mist);
    painter.fillPath(outline, fill);
}

void addWood(Drawing& drawing, const Hills& hills, const QSize& size, double height,
             const QColor& color, QRandomGenerator& chance)
{
    const QColor lit = between(color, Qt::white, 0.1);
    for (double x = 0; x < size.width(); x += height * (0.35 + chance.generateDouble() * 1.1)) {
        const double tall = height * (0.6 + 0.6 * chance.generateDouble());
        addSpruce(drawing, QPointF(x, hills.top(x, size) + tall * 0.12), tall, {lit, color, color});
    }
}

void paintPerson(QPainter& painter, const QSize& size, const QColor& color)
{
    const double width = size.width();
    const double middle = width / 2;
    const double neck = size.height() * 0.5;
    QPainterPath person;
    person.addEllipse(QPointF(middle, neck - width * 0.16), width * 0.165, width * 0.2);
    QPainterPath shoulders(QPointF(middle - width * 0.36, size.height() * 0.83));
    shoulders.cubicTo(middle - width * 0.36, neck + width * 0.1, middle - width * 0.16,
                      neck + width * 0.1, middle, neck + width * 0.1);
    shoulders.cubicTo(middle + width * 0.16, neck + width * 0.1, middle + width * 0.36,
                      neck + width * 0.1, middle + width * 0.36, size.height() * 0.83);
    shoulders.closeSubpath();
    painter.fillPath(person, color);
    painter.fillPath(shoulders, color);
}

} // namespace

QImage landscape(const QSize& size)
{
    const QColor mist(0xea, 0xf4, 0xec);
    const QColor near(0x3d, 0x7d, 0x5b);
    QImage picture(size, QImage::Format_RGB32);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, size.height() * 0.6);
    sky.setColorAt(0, QColor(0xd5, 0xe8, 0xdf));
    sky.setColorAt(1, QColor(0xf6, 0xfa, 0xf4));
    painter.fillRect(picture.rect(), sky);
    QRandomGenerator chance(20);
    const Hills chains[] = {
        {0.46, 0.05, 0.4}, {0.34, 0.045, 2.3}, {0.22, 0.04, 4.4}, {0.08, 0.03, 0.9}};
    double share = 0.22;
    double height = size.height() * 0.035;
    for (const Hills& hills : chains) {
        const QColor color = between(mist, near, share);
        Drawing wood(size);
        addWood(wood, hills, size, height, color, chance);
        wood.paint(painter);
        paintHills(painter, hills, size, color, between(mist, color, share * 0.7));
        share += 0.25;
        height *= 1.75;
    }
    return picture;
}

QImage paper(const QSize& size)
{
    QImage picture(size, QImage::Format_RGB32);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(0, 0, size.width(), size.height());
    ground.setColorAt(0, QColor(0xfa, 0xfc, 0xf8));
    ground.setColorAt(1, QColor(0xea, 0xf4, 0xea));
    painter.fillRect(picture.rect(), ground);
    painter.setPen(QPen(QColor(0xe2, 0xee, 0xe3), 1));
    for (double y = 39.5; y < size.height(); y += 40)
        painter.drawLine(QPointF(0, y), QPointF(size.width(), y));
    Drawing trees(size);
    const QColor lit(0xdd, 0xec, 0xdd);
    const QColor shaded(0xd3, 0xe6, 0xd5);
    const double edge = size.height();
    addSpruce(trees, QPointF(size.width() * 0.9, edge * 1.02), edge * 0.52, {lit, shaded, shaded});
    addSpruce(trees, QPointF(size.width() * 0.77, edge * 1.02), edge * 0.32, {lit, shaded, shaded});
    trees.paint(painter);
    return picture;
}

QImage noPhoto(const QSize& size)
{
    const QColor ground(0xee, 0xf3, 0xee);
    const QColor person(0xc2, 0xd3, 0xc6);
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(ground);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    paintPerson(painter, size, person);
    painter.setPen(QPen(person, 2));
    painter.drawRect(QRectF(picture.rect()).adjusted(1, 1, -1, -1));
    QFont font(u"WenQuanYi Micro Hei"_s);
    font.setPixelSize(size.height() / 15);
    painter.setFont(font);
    painter.setPen(QColor(0x5f, 0x7d, 0x69));
    painter.drawText(QRect(0, size.height() * 85 / 100, size.width(), size.height() / 8),
                     Qt::AlignCenter, u"暂无照片"_s);
    return picture;
}
