#include "platform/grid/ui/CellEditors.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QListWidget>

#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/EditKeys.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/Trap.h"

namespace grid {

namespace {

bool isEditable(const FlexGrid& grid, int row, int col)
{
    return row >= grid.FixedRows && col >= grid.FixedCols;
}

/// Makes the editor a child of the grid, hidden by its scrolling; gives the cell's place in the
/// grid.
QRect prepare(QWidget* editor, FlexGridView* view, int row, int col)
{
    view->select(row, col, row, col);
    if (editor->parentWidget() != view->viewport()) {
        editor->setParent(view->viewport());
        QObject::connect(view, &FlexGridView::scrolled, editor, [editor] { HideTS(editor); });
    }
    return view->visualRect(view->model()->index(row, col));
}

void mark(QListWidgetItem* item, bool on)
{
    if (item->flags() & Qt::ItemIsUserCheckable && item->data(Qt::CheckStateRole).isValid())
        item->setCheckState(on ? Qt::Checked : Qt::Unchecked);
    else
        item->setSelected(on);
}

/// Below the cell if the list fits there, otherwise above it.
QRect listPlace(const QRect& cell, const QSize& size, const QSize& area)
{
    const bool below = cell.bottom() + 1 + size.height() <= area.height();
    const int left = std::clamp(cell.left(), 0, std::max(area.width() - size.width(), 0));
    return {QPoint(left, below ? cell.bottom() + 1 : cell.top() - size.height()), size};
}

/// At least one whole entry and its frame are seen.
int listHeight(const QListWidget* list, const FlexGridView* view, int twips)
{
    if (twips <= 0)
        return list->height();
    const int entry = std::max(list->sizeHintForRow(0), 0) + 2 * list->frameWidth();
    return std::max(view->pixels(twips), entry);
}

class OpeningKeys : public QObject
{
public:
    OpeningKeys(CellTextEditor* box, FlexGridView* view, const std::function<void(int, int)>& open)
        : QObject(view), m_box(box), m_view(view), m_open(open)
    {
        view->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched != m_view || event->type() != QEvent::KeyPress)
            return false;
        const EditKey key = editKey(*static_cast<QKeyEvent*>(event));
        if (key != EditKey::Open && key != EditKey::Type)
            return false;
        m_open(m_view->grid().Row, m_view->grid().Col);
        if (key == EditKey::Type && m_box->isVisible()) {
            m_box->selectAll();
            QCoreApplication::sendEvent(m_box, event);
        }
        return true;
    }

private:
    CellTextEditor* m_box;
    FlexGridView* m_view;
    std::function<void(int, int)> m_open;
};

} // namespace

void ShowTextInMFG(QLineEdit* box, FlexGridView* view, int row, int col, Keyboard keyboard)
{
    const runtime::Trap trap{" - Sub ShowTextInMFG/MDLMsFlexGrid"};
    trap([&] {
        if (!isEditable(view->grid(), row, col))
            return;
        const QString text = view->grid().TextMatrix(row, col);
        box->setGeometry(prepare(box, view, row, col));
        box->setText(text);
        box->show();
        box->raise();
        if (keyboard == Keyboard::InBox)
            box->setFocus(Qt::OtherFocusReason);
        box->end(false);
    });
}

void ShowListInMFG(QListWidget* list, FlexGridView* view, int row, int col, int height,
                   const QString& separator)
{
    const runtime::Trap trap{" - Sub ShowListInMFG/MDLMsFlexGrid"};
    trap([&] {
        const QString text = view->grid().TextMatrix(row, col);
        const QStringList parts = separator.isEmpty() ? QStringList(text) : text.split(separator);
        const QRect cell = prepare(list, view, row, col);
        const QSize size(
            std::max(cell.width(), list->sizeHintForColumn(0) + 2 * list->frameWidth()),
            listHeight(list, view, height));
        list->setGeometry(listPlace(cell, size, view->viewport()->size()));
        for (int i = 0; i < list->count(); ++i)
            mark(list->item(i), parts.contains(list->item(i)->text()));
        list->show();
        list->raise();
    });
}

void HideTS(QWidget* editor)
{
    QWidget* const area = editor->parentWidget();
    if (editor->hasFocus() && area && area->parentWidget())
        area->parentWidget()->setFocus(Qt::OtherFocusReason);
    editor->hide();
}

void useOpeningKeys(CellTextEditor* box, FlexGridView* view,
                    const std::function<void(int row, int col)>& open)
{
    new OpeningKeys(box, view, open);
}

} // namespace grid
