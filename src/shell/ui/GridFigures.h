#pragma once

#include <QObject>

class QAction;
class QPoint;

namespace grid {
class FlexGridView;
}

namespace workbench {
class FormKaoShi;
}

namespace shell {

class MenuScreens;

/// Opens the students behind a figure of the result grid: by a double click, by Enter, and by the
/// item of the menus, which is on where the current cell stands for something.
class GridFigures : public QObject
{
    Q_OBJECT

public:
    /// The view becomes the parent; all of them outlive it.
    GridFigures(grid::FlexGridView& view, const workbench::FormKaoShi& workbench,
                MenuScreens& screens, QAction& item);

    /// Switches the item after the grid was filled or hidden.
    void switchItem();
    /// Makes the cell below this place of the screen the current one if it stands for something,
    /// before a menu opens there.
    void aim(const QPoint& place);

private:
    /// Nothing happens for a cell that stands for none.
    void open(int row, int col);

    grid::FlexGridView& m_view;
    const workbench::FormKaoShi& m_workbench;
    MenuScreens& m_screens;
    QAction& m_item;
};

} // namespace shell
