#pragma once

#include "library/ui/BackupBox.h"
#include "maintenance/ClassStreams.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QListWidget;
class QPushButton;

namespace maintenance {

/// "设置科类(文理科)": which classes have the stream 理 in 成绩表; all others have 文.
class FormSheZhiWenLi : public widgets::Screen
{
    Q_OBJECT

public:
    FormSheZhiWenLi(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                    QWidget* parent);

private:
    void makeWidgets();
    void Form_Load();
    void Command1_Click();

    ClassStreams m_streams;
    widgets::ScreenDialogs& m_dialogs;
    QListWidget* List1 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    library::BackupBox* CheckBackup = nullptr;
};

} // namespace maintenance
