#pragma once

#include "import/ui/IntakeScreen.h"

namespace importing {

/// "导入分班信息": students go to the classes and numbers of a sheet.
class FormDaoRuFenBanXinXi : public IntakeScreen
{
    Q_OBJECT

public:
    FormDaoRuFenBanXinXi(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                         Applications& applications, QWidget* parent);

private:
    void build();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
};

} // namespace importing
