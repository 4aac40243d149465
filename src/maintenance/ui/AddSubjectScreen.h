#pragma once

#include "maintenance/SubjectAddition.h"
#include "platform/widgets/DialogScreen.h"
#include "platform/widgets/ScreenDialogs.h"

class QHBoxLayout;
class QLineEdit;
class QListWidget;

namespace library {
class BackupBox;
}

namespace maintenance {

/// "添加科目": name of a new subject, or name and formula of a new total.
class AddSubjectScreen : public widgets::DialogScreen
{
    Q_OBJECT

public:
    AddSubjectScreen(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                     QWidget* parent);

    /// True when the screen was closed because the user wants to go on with "总分设置".
    bool wantsTotals() const { return m_wantsTotals; }

    /// Asks about a subject that was typed and not added.
    bool mayLeave() override;

private:
    void makeWidgets();
    void listSubjects();
    void takeName(const QString& typed);
    void takeSubjects();
    QHBoxLayout* makeButtons();
    /// False if it was not added.
    bool add();

    library::ScoreLibrary& m_library;
    SubjectAddition m_addition;
    widgets::ScreenDialogs& m_dialogs;
    bool m_wantsTotals = false;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_formula = nullptr;
    QListWidget* m_subjects = nullptr;
    library::BackupBox* m_backup = nullptr;
};

} // namespace maintenance
