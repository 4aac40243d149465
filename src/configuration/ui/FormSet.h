#pragma once

#include "configuration/AnalysisSettings.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

namespace grid {
class CellListEditor;
class CellTextEditor;
class FlexGridView;
class GridEditor;
} // namespace grid

namespace configuration {

/// "分析设置": the thresholds of the reports, and which of them 综合分析 takes.
class FormSet : public widgets::Screen
{
    Q_OBJECT

public:
    FormSet(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs, QWidget* parent);

    /// Puts the keyboard on the value of a setting, by its name in 设置表.
    void showSetting(const QString& name);

    /// Changes that were not saved are asked about.
    bool mayLeave() override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void build();
    QWidget* makeStrip();
    void makeEditor();
    void connectEditor();
    void Form_Load();
    void Form_Resize();
    void MSFlexGrid1_MouseUp(int row, int col);
    void cellOpened(int row, int col);
    void cellEdited(int row, int col);
    void cellTakenBack(int row, int col);
    void showComplaint(const QString& complaint);
    bool isTyped(int row, int col) const;
    SubjectConditions conditionsOf(int row);
    void SzGekE(int row);
    void Command1_Click();
    bool save();

    AnalysisSettings m_settings;
    widgets::ScreenDialogs& m_dialogs;
    grid::GridEditor* m_editor = nullptr;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    grid::CellTextEditor* Text1 = nullptr;
    grid::CellListEditor* List1 = nullptr;
};

} // namespace configuration
