#include "platform/grid/ui/CellTextEditor.h"

#include <QKeyEvent>

#include "platform/grid/ui/EditKeys.h"

namespace grid {

CellTextEditor::CellTextEditor(QWidget* parent) : QLineEdit(parent)
{
    setFrame(false);
    setAutoFillBackground(true);
}

bool CellTextEditor::event(QEvent* event)
{
    const int columns = tabColumns(*event);
    if (columns == 0)
        return QLineEdit::event(event);
    event->accept();
    Q_EMIT moved(0, columns);
    return true;
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
