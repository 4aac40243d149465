#pragma once

#include <QLineEdit>

namespace grid {

/// The text box of in-cell editing. It tells of the keys that lead out of it and leaves to its
/// screen what they do.
class CellTextEditor : public QLineEdit
{
    Q_OBJECT

public:
    explicit CellTextEditor(QWidget* parent = nullptr);

Q_SIGNALS:
    void entered();
    void cancelled();
    /// An arrow up or down, Tab or Shift+Tab: so many rows down and columns to the right.
    void moved(int rows, int cols);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace grid
