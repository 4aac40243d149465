#pragma once

#include <functional>
#include <memory>

#include <QDialog>

#include "library/StudentTree.h"
#include "maintenance/ui/MoveBox.h"
#include "platform/widgets/ScreenDialogs.h"

namespace library {
class StudentTreePanel;
}

namespace maintenance {

/// A box that asks with whom a student changes places. Esc cancels, Enter confirms.
class SwapBox : public QDialog
{
    Q_OBJECT

public:
    SwapBox(const RosterStudent& student, qsizetype earlierScores, const library::StudentTree& tree,
            widgets::ScreenDialogs& dialogs, QWidget* parent);

    /// Takes what was asked for, or says why it cannot be: the box stays open then.
    std::function<bool(const StudentMove&)> gather;

    /// What was asked for; `other` is 0 while nobody is chosen.
    StudentMove move() const;
    void accept() override;

private:
    RosterStudent m_student;
    library::StudentTreePanel* m_tree;
    std::unique_ptr<MoveTicks> m_ticks;
};

} // namespace maintenance
