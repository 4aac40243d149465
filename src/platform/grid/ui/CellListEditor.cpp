#include "platform/grid/ui/CellListEditor.h"

#include <QKeyEvent>

#include "platform/grid/ui/EditKeys.h"

namespace grid {

CellListEditor::CellListEditor(Choice choice, QWidget* parent)
    : QListWidget(parent), m_choice(choice)
{
    setSelectionMode(MultiSelection);
    setAutoFillBackground(true);
}

void CellListEditor::setEntries(const QStringList& entries)
{
    clear();
    for (const QString& entry : entries) {
        if (!entry.isEmpty())
            addItem(entry);
    }
}

QStringList CellListEditor::picked() const
{
    QStringList texts;
    for (int row = 0; row < count(); ++row) {
        if (item(row)->isSelected())
            texts.append(item(row)->text());
    }
    return texts;
}

void CellListEditor::takeKeyboard()
{
    int first = 0;
    while (first < count() && !item(first)->isSelected())
        ++first;
    setCurrentRow(first < count() ? first : 0, QItemSelectionModel::NoUpdate);
    setFocus(Qt::OtherFocusReason);
}

void CellListEditor::selectAll()
{
    if (m_choice == Choice::One)
        return;
    QListWidget::selectAll();
    Q_EMIT changed();
}

void CellListEditor::flip(QListWidgetItem* item)
{
    item->setSelected(!item->isSelected());
}

void CellListEditor::pickAlone(QListWidgetItem* item)
{
    clearSelection();
    item->setSelected(true);
}

void CellListEditor::pickByClick(QListWidgetItem* item, Qt::KeyboardModifiers modifiers)
{
    const bool adds =
        m_choice == Choice::Several && modifiers & (Qt::ControlModifier | Qt::ShiftModifier);
    setCurrentItem(item, QItemSelectionModel::NoUpdate);
    if (adds)
        flip(item);
    else
        pickAlone(item);
    Q_EMIT changed();
    if (!adds)
        Q_EMIT finished();
}

void CellListEditor::pickBySpace()
{
    if (currentItem() == nullptr)
        return;
    if (m_choice == Choice::One)
        pickAlone(currentItem());
    else
        flip(currentItem());
    Q_EMIT changed();
    if (m_choice == Choice::One)
        Q_EMIT finished();
}

bool CellListEditor::event(QEvent* event)
{
    const int columns = tabColumns(*event);
    if (columns == 0)
        return QListWidget::event(event);
    event->accept();
    Q_EMIT moved(0, columns);
    return true;
}

void CellListEditor::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        return pickBySpace();
    case Qt::Key_Enter:
    case Qt::Key_Return:
        // The entry that Enter stands on is meant where only one can be.
        if (m_choice == Choice::One)
            return pickBySpace();
        Q_EMIT finished();
        return;
    case Qt::Key_Escape:
        Q_EMIT cancelled();
        return;
    default:
        QListWidget::keyPressEvent(event);
    }
}

void CellListEditor::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->button() == Qt::LeftButton ? itemAt(event->position().toPoint()) : nullptr;
}

void CellListEditor::mouseMoveEvent(QMouseEvent*) {}

void CellListEditor::mouseReleaseEvent(QMouseEvent* event)
{
    QListWidgetItem* const item = itemAt(event->position().toPoint());
    const bool isClick = item != nullptr && item == m_pressed;
    m_pressed = nullptr;
    if (isClick)
        pickByClick(item, event->modifiers());
}

/// At the end of the list the wheel would scroll the grid below, which hides its editors.
void CellListEditor::wheelEvent(QWheelEvent* event)
{
    QListWidget::wheelEvent(event);
    event->accept();
}

} // namespace grid
