#pragma once

#include "platform/grid/GridSort.h"
#include "platform/widgets/DialogScreen.h"
#include "workbench/FigureList.h"

class QPlainTextEdit;
class QVBoxLayout;

namespace grid {
class FlexGridView;
}

namespace workbench {

/// "查看名单": the students behind a figure, to read, sort, search, copy and export. Esc closes it.
class FigureScreen : public widgets::DialogScreen
{
    Q_OBJECT

public:
    FigureScreen(FigureList list, QWidget* parent);

Q_SIGNALS:
    /// "导出到Excel" was pressed.
    void exportRequested(const grid::FlexGrid& grid);

private:
    void addText(QVBoxLayout* layout, const QString& name, const QString& text);
    void addList(QVBoxLayout* layout);
    void addSql(QVBoxLayout* layout);
    void addButtons(QVBoxLayout* layout);
    /// By one column; by the same once more the other way round.
    void sortBy(int col);
    void copyAll();

    FigureList m_list;
    grid::FlexGridView* m_view = nullptr;
    int m_sortedCol = -1;
    grid::SortOrder m_order = grid::SortOrder::Ascending;
};

} // namespace workbench
