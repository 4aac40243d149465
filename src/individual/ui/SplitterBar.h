#pragma once

#include <QFrame>

namespace individual {

/// The bar between two parts of a screen that is moved up and down, by mouse or by ↑ and ↓.
class SplitterBar : public QFrame
{
    Q_OBJECT

public:
    explicit SplitterBar(QWidget* parent);

Q_SIGNALS:
    /// The user wants the bar so many pixels further down.
    void moved(int distance);
    /// The mouse button, or the key, was let go.
    void released();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool SplitterDown = false;
    /// Where the pointer holds the bar.
    int SplitterY = 0;
};

} // namespace individual
