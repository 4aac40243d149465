#pragma once

#include <QLabel>

namespace individual {

/// A text that stands on the chart, its lines as close as the margin below the frame wants them.
/// One that may be moved follows the left mouse button; let go outside the chart, it goes back.
class ChartLabel : public QLabel
{
    Q_OBJECT

public:
    enum class Moves { No, Yes };

    ChartLabel(const QString& name, Moves moves, QWidget* surface);

    /// Shows the text as it stands, cut to what a chart has room for, in this colour.
    void setContent(const QString& text, const QColor& color);

    /// Paints the text on the surface. A label that painted itself would cost a painter of its own,
    /// and a chart can have 700.
    void paintOn(QPainter& surface) const;

protected:
    void paintEvent(QPaintEvent* /*event*/) override {}
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void setColor(const QColor& color);

    Moves m_moves;
    QStringList m_lines;
    int m_lineHeight = 0;
    QColor m_color;
    bool m_dragged = false;
    // Where the pointer holds the label, and where the label was.
    int DragX = 0;
    int DragY = 0;
    QPoint m_before;
};

} // namespace individual
