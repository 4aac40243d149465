#pragma once

#include <functional>

#include <QObject>
#include <QString>

namespace grid {

class CellTextEditor;
class FlexGridView;

/// Edits one column of a grid in place, by a text box over the cell. A click anywhere on a row
/// opens it in that row; Enter, F2 or typing in the grid open it in the current one. Up and down
/// take it to the next row, Tab closes it, Esc gives back what the cell held and closes it. What
/// Enter does is the screen's, which hears of it from the box.
class ColumnEditor : public QObject
{
    Q_OBJECT

public:
    /// What of the mouse opens the box: press and release over one cell, or the release alone.
    enum class OpenedBy { Click, Release };

    /// Hides the box. The view becomes the parent.
    ColumnEditor(FlexGridView* view, CellTextEditor* box, int column, OpenedBy openedBy);

    /// Opens the box in this row; in a fixed row it opens none.
    void open(int row);
    void close();
    /// The row that it was last opened in.
    int CurRow() const { return m_row; }

    /// `mayLeave` is asked before up, down or Tab leave the row; where it says no, nothing happens.
    void askBeforeLeaving(const std::function<bool()>& mayLeave) { m_mayLeave = mayLeave; }

private:
    void clickRow(int row);
    void moveBy(int rows);
    void cancel();
    bool hasCell(int row) const;

    FlexGridView* m_view;
    CellTextEditor* m_box;
    int m_column;
    int m_row = 0;
    /// What the cell under the box held when it was opened.
    QString m_before;
    std::function<bool()> m_mayLeave = [] { return true; };
};

} // namespace grid
