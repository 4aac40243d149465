#pragma once

#include <functional>

#include <QString>

class QLineEdit;
class QListWidget;
class QWidget;

namespace grid {

class CellTextEditor;
class FlexGridView;

/// Where keys go while a text box lies over a cell.
enum class Keyboard { InBox, InGrid };

/// Lays the text box exactly over a cell, which becomes the current one, gives it the cell's text
/// with the cursor at the end, and the focus if the keyboard shall be in it. Only for cells behind
/// the fixed rows and columns; for a fixed one nothing happens, and a cell outside the grid is a
/// failure shown in a message. The box becomes a child of the grid and hides when the grid scrolls.
void ShowTextInMFG(QLineEdit* box, FlexGridView* view, int row, int col,
                   Keyboard keyboard = Keyboard::InBox);

/// Lays the list below the cell if it fits into the grid there, otherwise above it, and checks the
/// entries whose texts stand in the cell's text, which `separator` divides; in a list without check
/// boxes it selects them. `height` is in twips; 0 or less leaves the list as high as it is.
void ShowListInMFG(QListWidget* list, FlexGridView* view, int row, int col, int height,
                   const QString& separator);

/// Takes an in-cell editor out of sight; a focus in it goes back to the grid.
void HideTS(QWidget* editor);

/// Opens the in-cell editor by keys pressed in the grid: Enter and F2 open it on the current cell's
/// text, any character opens it and takes the text's place. `open` lays the editor over a cell of
/// the given row and column; where it opens none, the key does nothing.
void useOpeningKeys(CellTextEditor* box, FlexGridView* view,
                    const std::function<void(int row, int col)>& open);

} // namespace grid
