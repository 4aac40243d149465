#pragma once

class QEvent;
class QKeyEvent;

namespace grid {

/// What a key pressed in a grid asks of the current cell.
enum class EditKey {
    None,
    Open,     ///< Enter, F2: edit what it holds
    OpenList, ///< Alt+↓: show what can be picked
    Type      ///< a character, which begins a new text
};

EditKey editKey(const QKeyEvent& key);

/// Columns to the right that Tab (1) or Shift+Tab (-1) leads; 0 for any other event. Editors ask it
/// of each event, since Tab goes to the next widget before their keyPressEvent sees it.
int tabColumns(const QEvent& event);

/// True for the blank, which picks and flips where no text is typed.
bool isSpace(const QKeyEvent& key);

} // namespace grid
