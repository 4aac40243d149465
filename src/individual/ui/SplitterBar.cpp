#include "individual/ui/SplitterBar.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "platform/widgets/Screen.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

bool movesBar(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Up || key.key() == Qt::Key_Down;
}

} // namespace

SplitterBar::SplitterBar(QWidget* parent) : QFrame(parent)
{
    widgets::named(this, u"PictureW"_s, u"表格与图的分隔条"_s);
    setToolTip(u"上下拖动，或按 ↑↓，改变表格与图的高度"_s);
    setFrameStyle(int(QFrame::Panel) | int(QFrame::Raised));
    setCursor(Qt::SplitVCursor);
    setFocusPolicy(Qt::StrongFocus);
    setFixedHeight(std::max(6, fontMetrics().height() / 2));
}

void SplitterBar::mousePressEvent(QMouseEvent* event)
{
    SplitterDown = true;
    SplitterY = event->pos().y();
}

void SplitterBar::mouseMoveEvent(QMouseEvent* event)
{
    if (SplitterDown)
        Q_EMIT moved(event->pos().y() - SplitterY);
}

void SplitterBar::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    SplitterDown = false;
    Q_EMIT released();
}

void SplitterBar::keyPressEvent(QKeyEvent* event)
{
    if (!movesBar(*event))
        return QFrame::keyPressEvent(event);
    const int line = fontMetrics().height();
    Q_EMIT moved(event->key() == Qt::Key_Up ? -line : line);
}

void SplitterBar::keyReleaseEvent(QKeyEvent* event)
{
    if (!movesBar(*event))
        QFrame::keyReleaseEvent(event);
    else if (!event->isAutoRepeat())
        Q_EMIT released();
}

void SplitterBar::focusInEvent(QFocusEvent* event)
{
    QFrame::focusInEvent(event);
    setBackgroundRole(QPalette::Highlight);
    setAutoFillBackground(true);
}

void SplitterBar::focusOutEvent(QFocusEvent* event)
{
    QFrame::focusOutEvent(event);
    setAutoFillBackground(false);
}

} // namespace individual
