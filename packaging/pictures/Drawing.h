#pragma once

#include <vector>

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QSize>

/// Filled shapes, one over the other, that can be painted and written as SVG.
class Drawing
{
public:
    explicit Drawing(const QSize& size) : m_size(size) {}

    void add(const QPainterPath& outline, const QColor& fill)
    {
        m_shapes.push_back({outline, fill});
    }

    void paint(QPainter& painter) const;
    QImage image(const QSize& size) const;
    QByteArray svg(const QString& title) const;

private:
    struct Shape
    {
        QPainterPath outline;
        QColor fill;
    };

    QSize m_size;
    std::vector<Shape> m_shapes;
};

/// The two colours of a spruce: its lit side and its shaded side.
struct SpruceColors
{
    QColor lit;
    QColor shaded;
    QColor trunk;
};

/// A spruce of three tiers that stands on `foot`.
void addSpruce(Drawing& drawing, const QPointF& foot, double height, const SpruceColors& colors);

/// An open book with ruled pages, `width` wide, whose middle fold ends at `foot`.
void addBook(Drawing& drawing, const QPointF& foot, double width);

/// The program's icon, 256 units wide.
Drawing icon();
