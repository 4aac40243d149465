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

    /// Selects the student at a place in the tree, counted from 0 without the classes.
    void selectStudent(int place);
    /// The place of the selected student; -1 for none.
    int selectedPlace() const;

Q_SIGNALS:
    /// A node was clicked, or a key was pressed and released here, or moved the selection.
    void nodeChosen();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    std::vector<QTreeWidgetItem*> m_students;
    /// The key that is down has chosen a node already.
    bool m_toldByPress = false;
};

} // namespace library
