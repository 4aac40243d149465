#pragma once

#include <QPushButton>

namespace individual {

/// A button that is filled with the colour it stands for. Any mouse button presses it.
class ColorSwatch : public QPushButton
{
    Q_OBJECT

public:
    /// `color` as 0xBBGGRR.
    ColorSwatch(int color, QWidget* parent);

    int color() const { return m_color; }
    void setColor(int color);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    int m_color;
};

} // namespace individual
