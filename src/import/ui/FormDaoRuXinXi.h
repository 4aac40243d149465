#pragma once

#include "import/ui/IntakeScreen.h"

namespace importing {

/// "导入学生信息": students from a sheet.
class FormDaoRuXinXi : public IntakeScreen
{
    Q_OBJECT

public:
    FormDaoRuXinXi(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                   Applications& applications, QWidget* parent);

private:
    void Form_Load();
    void build();
    void Command1_Click();
    void Command3_Click();

    QLabel* Label3 = nullptr;
};

} // namespace importing
