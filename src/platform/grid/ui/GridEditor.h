#pragma once

#include <functional>
#include <optional>

#include <QObject>
#include <QStringList>

class QInputMethodEvent;
class QKeyEvent;

namespace grid {

class CellListEditor;
class CellTextEditor;
class FlexGridView;
enum class Keyboard;

/// What a cell is edited by.
enum class CellEditing {
    None,       ///< nothing is laid over it; a click on it is the screen's
    Text,       ///< the text box
    List,       ///< the pick list
    TextAndList ///< both at once, the keyboard in the text box
};

/// What Enter does in the text box: editing goes on in the cell below, or ends.
enum class AfterEnter { Down, Close };

/// How the cells of a screen are edited.
struct CellDesign
{
    /// Asked for the cells behind the fixed rows and columns; on fixed ones no editor opens.
    std::function<CellEditing(int row, int col)> editing;
    /// The entries of a cell's list; nothing keeps those that stand in it. Needed for lists alone.
    std::function<std::optional<QStringList>(int row, int col)> entries = {};
    /// Height of the list in twips; 0 leaves it as high as it is.
    int listHeight = 0;
    AfterEnter afterEnter = AfterEnter::Down;
};

/// Edits the cells of a grid in place as a spreadsheet does. A click opens a cell's editors; Enter,
/// F2 and typing open the text box, Alt+↓, Enter and the space key the list. Enter leads down, Tab
/// to the right, Esc gives back what the cell held. What is typed or picked stands in the cell at
/// once, what an input method composes when it is complete; of several picked entries "," stands
/// between.
class GridEditor : public QObject
{
    Q_OBJECT

public:
    /// Hides the editors. The view becomes the parent; `list` can be null.
    GridEditor(FlexGridView* view, CellTextEditor* box, CellListEditor* list, CellDesign design);

    /// Does what a click on the cell does.
    void open(int row, int col);
    /// Takes the editors out of sight.
    void HideTS();
    bool isOpen() const;

    /// The cell that was last clicked or opened.
    int CurRow() const { return m_row; }
    int CurCol() const { return m_col; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The editors of this cell opened.
    void opened(int row, int col);
    /// The user typed or picked: the cell holds the new text.
    void edited(int row, int col);
    /// Esc gave the cell back the text that it held when it was opened.
    void takenBack(int row, int col);
    /// A cell that no editor opens on was clicked, or Enter, F2 or the space key pressed on it.
    void activated(int row, int col);

private:
    CellEditing editing(int row, int col) const;
    bool takesText(int row, int col) const;
    void openWith(int row, int col, Keyboard keyboard);
    void openList(Keyboard keyboard);
    bool pressInGrid(const QKeyEvent& key);
    void type(const QKeyEvent& key);
    bool compose(QInputMethodEvent* event);
    void startComposing();
    void endComposing();
    void moveBy(int rows, int cols);
    void entered();
    void cancel();
    void write(const QString& text);
    void takePicked();

    FlexGridView* m_view;
    CellTextEditor* m_box;
    CellListEditor* m_list;
    CellDesign m_design;
    int m_row = 0;
    int m_col = 0;
    /// An input method composes a text, which the box shows while the keyboard is in the grid.
    bool m_composing = false;
    /// What the cell held when its editors were opened.
    QString m_before;
};

} // namespace grid
