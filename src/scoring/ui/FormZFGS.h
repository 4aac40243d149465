#pragma once

#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"
#include "scoring/TotalFormulas.h"

class QLineEdit;
class QListWidget;

namespace scoring {

/// "总分公式": of what subjects the totals of the exams are the sum.
class FormZFGS : public widgets::Screen
{
    Q_OBJECT

public:
    FormZFGS(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs, QWidget* parent);

private:
    void makeWidgets();
    void connectWidgets();
    void Form_Load();
    void ShowGS();
    void List3_Click();
    void Command1_Click();

    TotalFormulas m_formulas;
    widgets::ScreenDialogs& m_dialogs;
    QListWidget* List1 = nullptr;
    QListWidget* List2 = nullptr;
    QListWidget* List3 = nullptr;
    QLineEdit* Text1 = nullptr;
};

} // namespace scoring
