#pragma once

#include <optional>

#include "library/StudentTree.h"
#include "maintenance/StudentMoves.h"
#include "platform/grid/FlexGrid.h"
#include "platform/widgets/DialogScreen.h"
#include "platform/widgets/ScreenDialogs.h"

class QPushButton;
class QVBoxLayout;

namespace grid {
class FlexGridView;
}

namespace library {
class BackupBox;
class StudentTreePanel;
} // namespace library

namespace maintenance {

/// "学生调整": gathers moves, swaps and removals of single students, shows what they will do, and
/// carries them out together.
class StudentMovesScreen : public widgets::DialogScreen
{
    Q_OBJECT

public:
    StudentMovesScreen(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                       QWidget* parent);

    /// Asks about changes that were not carried out.
    bool mayLeave() override;

private:
    void makeWidgets();
    void addStudentButtons(QVBoxLayout* layout);
    void addRunButtons(QVBoxLayout* layout);
    void onClick(QPushButton* pressed, void (StudentMovesScreen::*handler)());
    void showTree();
    void showPlan();
    void move();
    void swap();
    void remove();
    void takeBack();
    void execute();
    /// False unless everything was carried out.
    bool run();

    /// The selected student with his earlier scores, as the library is now; nothing, after a
    /// message, if none is selected or he is gone.
    std::optional<PlannedStudent> chosenStudent();
    /// Gathers the change, or says why it cannot be: false then.
    bool gather(const StudentMove& wanted);

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    StudentMoves m_moves;
    MovePlan m_plan;
    library::StudentTree m_students;
    grid::FlexGrid m_grid;
    library::StudentTreePanel* m_tree = nullptr;
    grid::FlexGridView* PlanGrid = nullptr;
    library::BackupBox* CheckBackup = nullptr;
    QPushButton* buttonTakeBack = nullptr;
    QPushButton* buttonRun = nullptr;
};

} // namespace maintenance
