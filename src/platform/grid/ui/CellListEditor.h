#pragma once

#include <QListWidget>

namespace grid {

/// The pick list of in-cell editing. It tells of what the user picks and of the keys that lead out
/// of it, and leaves to its grid what they do.
class CellListEditor : public QListWidget
{
    Q_OBJECT

public:
    enum class Choice {
        One,    ///< a click or the space key picks an entry in place of the one before
        Several ///< a click likewise; with Ctrl or Shift, and by the space key, one more
    };

    explicit CellListEditor(Choice choice, QWidget* parent = nullptr);

    /// Takes these entries in place of those before; empty ones are left out.
    void setEntries(const QStringList& entries);

    /// The picked entries in the order of the list.
    QStringList picked() const;

    /// Gives the keyboard to the first picked entry.
    void takeKeyboard();

    /// Picks all entries, as Ctrl+A does, where several can be picked.
    void selectAll() override;

Q_SIGNALS:
    /// What is picked changed by the user.
    void changed();
    /// The user is done: by a click that picks no more than one entry, or by Enter.
    void finished();
    void cancelled();
    /// Tab or Shift+Tab: so many columns to the right.
    void moved(int rows, int cols);

protected:
    /// No key picks on its way through the list, and neither does a letter that goes to its entry.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex&,
                                                         const QEvent*) const override
    {
        return QItemSelectionModel::NoUpdate;
    }
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void pickAlone(QListWidgetItem* item);
    static void flip(QListWidgetItem* item);
    void pickByClick(QListWidgetItem* item, Qt::KeyboardModifiers modifiers);
    void pickBySpace();

    Choice m_choice;
    /// The entry that the mouse was pressed over.
    const QListWidgetItem* m_pressed = nullptr;
};

} // namespace grid
