#include "platform/grid/ui/CellTextEditor.h"

#include <QKeyEvent>

namespace grid {

CellTextEditor::CellTextEditor(QWidget* parent) : QLineEdit(parent)
{
    setFrame(false);
    setAutoFillBackground(true);
}

bool CellTextEditor::event(QEvent* event)
{
    // Tab would go to the next widget before keyPressEvent sees it.
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            event->accept();
            Q_EMIT moved(0, key == Qt::Key_Tab ? 1 : -1);
            return true;
        }
    }
    return QLineEdit::event(event);
}

void CellTextEditor::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Enter:
    case Qt::Key_Return:
        event->accept();
        Q_EMIT entered();
        return;
    case Qt::Key_Escape:
        event->accept();
        Q_EMIT cancelled();
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
        event->accept();
        Q_EMIT moved(event->key() == Qt::Key_Up ? -1 : 1, 0);
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace grid
