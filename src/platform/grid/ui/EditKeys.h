#pragma once

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

/// True for the blank, which picks and flips where no text is typed.
bool isSpace(const QKeyEvent& key);

} // namespace grid
