#pragma once

#include "maintenance/TeacherList.h"
#include "maintenance/TeacherPick.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;
class QHBoxLayout;
class QListWidget;
class QPushButton;

namespace grid {
class CellListEditor;
class CellTextEditor;
class FlexGridView;
class GridEditor;
} // namespace grid

namespace maintenance {

/// "设置教师名单": the teachers of each class and column in one exam.
class FormJiaoShiMingDan : public widgets::Screen
{
    Q_OBJECT

public:
    FormJiaoShiMingDan(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                       QWidget* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

    bool mayLeave() override;

private:
    void makeWidgets();
    void makeGrid();
    QHBoxLayout* makeHead();
    QHBoxLayout* makeButtons();
    void connectWidgets();
    void Form_Load();
    void Combo1_Click();
    void Command4_Click();
    void List2_Click();
    void Command3_Click();
    void Command1_Click();
    std::optional<QStringList> ShowJiaoShi(int column) const;
    bool settleUnsaved();
    void hideExams();

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    TeacherList m_list;
    TeacherPick m_pick;
    grid::GridEditor* m_editor = nullptr;
    QComboBox* Combo1 = nullptr;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    grid::CellTextEditor* Text1 = nullptr;
    grid::CellListEditor* List1 = nullptr;
    QListWidget* List2 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
    QPushButton* Command4 = nullptr;
};

} // namespace maintenance
