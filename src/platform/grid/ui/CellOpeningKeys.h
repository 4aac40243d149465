#pragma once

#include <functional>

namespace grid {

class CellTextEditor;
class FlexGridView;

/// Opens the in-cell editor by keys pressed in the grid: Enter and F2 open it on the current cell's
/// text, any character opens it and takes the text's place. `open` lays the editor over a cell of
/// the given row and column; where it opens none, the key does nothing.
void useOpeningKeys(CellTextEditor* box, FlexGridView* view,
                    const std::function<void(int row, int col)>& open);

} // namespace grid
