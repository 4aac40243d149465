#pragma once

#include "library/ScoreLibrary.h"
#include "library/ui/BackupBox.h"
#include "maintenance/paint/PictureFiles.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QLineEdit;
class QToolButton;

namespace maintenance {

/// "设置照片": gives all students the photos of a folder.
class FormSheZhiZhaoPian : public widgets::Screen
{
    Q_OBJECT

public:
    FormSheZhiZhaoPian(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                       QWidget* parent);

private:
    void makeWidgets();
    void layOut();
    void Label2_Click();
    void Command1_Click();

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    PictureFiles m_photos;
    QString PhotoFolder;
    QLineEdit* Text1 = nullptr;
    QToolButton* Label2 = nullptr;
    library::BackupBox* CheckBackup = nullptr;
    QPushButton* Command1 = nullptr;
};

} // namespace maintenance
