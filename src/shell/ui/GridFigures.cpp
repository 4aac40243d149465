#include "shell/ui/GridFigures.h"

#include <QAction>

#include "platform/grid/ui/FlexGridView.h"
#include "shell/ui/MenuScreens.h"
#include "workbench/ui/FormKaoShi.h"

namespace shell {

using grid::FlexGridView;

GridFigures::GridFigures(FlexGridView& view, const workbench::FormKaoShi& workbench,
                         MenuScreens& screens, QAction& item)
    : QObject(&view), m_view(view), m_workbench(workbench), m_screens(screens), m_item(item)
{
    connect(&m_view, &FlexGridView::cellActivated, this, &GridFigures::open);
    connect(&m_view, &FlexGridView::rowColChanged, this, &GridFigures::switchItem);
    connect(&m_item, &QAction::triggered, this,
            [this] { open(m_view.grid().RowSel, m_view.grid().ColSel); });
    switchItem();
}

void GridFigures::switchItem()
{
    const grid::FlexGrid& grid = m_view.grid();
    m_item.setEnabled(!m_view.isHidden() && m_workbench.figureAt(grid.RowSel, grid.ColSel));
}

void GridFigures::aim(const QPoint& place)
{
    const QModelIndex cell = m_view.indexAt(m_view.viewport()->mapFromGlobal(place));
    if (m_workbench.figureAt(cell.row(), cell.column()))
        m_view.select(cell.row(), cell.column(), cell.row(), cell.column());
    switchItem();
}

void GridFigures::open(int row, int col)
{
    if (const std::optional<statistics::Figure> figure = m_workbench.figureAt(row, col))
        m_screens.showFigure(*figure, m_workbench.columnsInForce());
}

} // namespace shell
