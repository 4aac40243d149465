#pragma once

#include "configuration/SubjectConditions.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QLabel;

namespace grid {
class FlexGridView;
class GridEditor;
} // namespace grid

namespace configuration {

/// "分析设置" of one setting by stream and subject. Its caption names the setting.
class FormXiangXiSZ : public widgets::Screen
{
    Q_OBJECT

public:
    /// Shows the conditions and saves them; both outlive the screen.
    FormXiangXiSZ(SubjectConditions& conditions, AnalysisSettings& settings,
                  widgets::ScreenDialogs& dialogs, QWidget* parent);

    /// Changes that were not saved are asked about.
    bool mayLeave() override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void build();
    QWidget* makeStrip();
    void makeEditor();
    void Form_Resize();
    QString settingName() const;
    void Command1_Click();
    bool save();
    void Command3_Click();

    SubjectConditions& m_conditions;
    AnalysisSettings& m_settings;
    widgets::ScreenDialogs& m_dialogs;
    grid::GridEditor* m_editor = nullptr;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    QLabel* LabelNote = nullptr;
};

} // namespace configuration
