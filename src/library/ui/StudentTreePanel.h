#pragma once

#include <memory>

#include <QTimer>
#include <QWidget>

#include "library/StudentFinder.h"
#include "platform/widgets/ScreenDialogs.h"

class QLabel;
class QLineEdit;

namespace library {

class StudentTreeView;

/// The tree of classes and students with a line above it that finds a student: Enter and F3 go to
/// the next one, with Shift to the one before.
class StudentTreePanel : public QWidget
{
    Q_OBJECT

public:
    StudentTreePanel(widgets::ScreenDialogs& dialogs, QWidget* parent);
    ~StudentTreePanel() override;

    void setTree(const StudentTree& tree);

    /// The selected node: a student's ID, 0 for a class, nothing when none is selected.
    std::optional<qint64> selected() const;

    /// Selects the student of this ID, or nothing if the tree has none, and tells nobody.
    void select(qint64 id);

    StudentTreeView* view() const { return TreeView1; }

Q_SIGNALS:
    /// A node was chosen by mouse, by keyboard or by the line above.
    void nodeChosen();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void addKey(const QKeySequence& key, Qt::SortOrder direction);
    void findStudent(Qt::SortOrder direction);
    /// Names are spelled while the user types, in steps that he does not feel.
    void spellAhead();

    widgets::ScreenDialogs& m_dialogs;
    std::unique_ptr<StudentFinder> m_finder;
    QTimer m_idle;
    QLineEdit* TextFind = nullptr;
    QLabel* LabelFindResult = nullptr;
    StudentTreeView* TreeView1 = nullptr;
};

} // namespace library
