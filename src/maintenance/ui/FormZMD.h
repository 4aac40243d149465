#pragma once

#include "platform/runtime/AppPaths.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QPlainTextEdit;
class QPushButton;

namespace maintenance {

/// "修改教师总名单": the names that teachers are picked from, as a text.
class FormZMD : public widgets::Screen
{
    Q_OBJECT

public:
    FormZMD(runtime::AppPaths paths, widgets::ScreenDialogs& dialogs, QWidget* parent);

    bool mayLeave() override;

private:
    void makeWidgets();
    void Form_Load();
    void Command1_Click();
    bool save();

    runtime::AppPaths m_paths;
    widgets::ScreenDialogs& m_dialogs;
    /// The text that the file holds.
    QString m_stored;
    QPlainTextEdit* Text1 = nullptr;
    QPushButton* Command1 = nullptr;
};

} // namespace maintenance
