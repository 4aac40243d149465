#include "platform/grid/ui/ColumnEditor.h"

#include "platform/grid/ui/CellEditors.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"

namespace grid {

ColumnEditor::ColumnEditor(FlexGridView* view, CellTextEditor* box, int column, OpenedBy openedBy)
    : QObject(view), m_view(view), m_box(box), m_column(column)
{
    m_box->hide();
    connect(m_view,
            openedBy == OpenedBy::Click ? &FlexGridView::cellClicked : &FlexGridView::cellReleased,
            this, &ColumnEditor::clickRow);
    connect(m_box, &CellTextEditor::moved, this, &ColumnEditor::moveBy);
    connect(m_box, &CellTextEditor::cancelled, this, &ColumnEditor::cancel);
    useOpeningKeys(m_box, m_view, [this](int row, int) { open(row); });
}

void ColumnEditor::open(int row)
{
    m_row = row;
    if (hasCell(row))
        m_before = m_view->grid().TextMatrix(row, m_column);
    ShowTextInMFG(m_box, m_view, row, m_column);
}

void ColumnEditor::close()
{
    HideTS(m_box);
}

void ColumnEditor::clickRow(int row)
{
    // A box left open would answer for the heading.
    if (row < m_view->grid().FixedRows)
        close();
    open(row);
}

/// Up and down go on editing; Tab, which moves by no row, leaves the column.
void ColumnEditor::moveBy(int rows)
{
    if (!m_mayLeave())
        return;
    const int row = m_row + rows;
    if (rows == 0)
        close();
    else if (hasCell(row))
        open(row);
}

void ColumnEditor::cancel()
{
    m_box->setText(m_before);
    close();
}

bool ColumnEditor::hasCell(int row) const
{
    return row >= m_view->grid().FixedRows && row < m_view->grid().Rows();
}

} // namespace grid
