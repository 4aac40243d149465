#pragma once

#include "maintenance/SubjectRemoval.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QListWidget;

namespace library {
class BackupBox;
}

namespace maintenance {

/// "删除科目": takes subjects and totals out of the library for good.
class FormDelKM : public widgets::Screen
{
    Q_OBJECT

public:
    FormDelKM(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
              QWidget* parent);

private:
    void makeWidgets();
    void Command1_Click();

    SubjectRemoval m_removal;
    widgets::ScreenDialogs& m_dialogs;
    QListWidget* ListKM = nullptr;
    library::BackupBox* CheckBackup = nullptr;
};

} // namespace maintenance
