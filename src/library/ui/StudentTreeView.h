#pragma once

#include <QTreeWidget>

#include "library/StudentTree.h"

namespace library {

/// The tree of classes and students, by mouse and keyboard. A student's ID is the item's
/// Qt::UserRole; a class has none.
class StudentTreeView : public QTreeWidget
{
    Q_OBJECT

public:
    explicit StudentTreeView(QWidget* parent = nullptr);

    /// Shows these classes, expanded, with the first one in view and nothing selected.
    void setTree(const StudentTree& tree);

    /// Selects the student at a place in the tree, counted from 0 without the classes; nothing for
    /// -1.
    void selectStudent(int place);
    /// The place of the selected student; -1 for none.
    int selectedPlace() const;

Q_SIGNALS:
    /// A node was clicked or selected by mouse or keyboard, or a key was pressed and released here.
    void nodeChosen();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    void choose();

    std::vector<QTreeWidgetItem*> m_students;
    /// What was selected when nodeChosen was told last.
    QList<QTreeWidgetItem*> m_told;
    /// The key that was pressed last and is down; 0 for none.
    int m_pressed = 0;
    /// That key has chosen a node already.
    bool m_toldByPress = false;
};

} // namespace library
