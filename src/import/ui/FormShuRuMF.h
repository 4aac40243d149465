#pragma once

#include "import/FullMarks.h"
#include "platform/widgets/Screen.h"

namespace grid {
class CellTextEditor;
class ColumnEditor;
class FlexGridView;
} // namespace grid

namespace importing {

/// "输入各科满分": the full marks of the subjects that an import found.
class FormShuRuMF : public widgets::Screen
{
    Q_OBJECT

public:
    /// `label` names stream and exam.
    FormShuRuMF(ImportState& state, const runtime::AppPaths& paths, const QString& label,
                QWidget* parent);

    /// Rows that were never accepted are asked about.
    bool mayLeave() override;

private:
    void makeWidgets(const QString& label);
    void connectEditor();
    void Text1_Change();
    void Text1_Enter();
    void Command1_Click();
    void Command2_Click();

    FullMarks m_marks;
    grid::ColumnEditor* m_editor = nullptr;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    grid::CellTextEditor* Text1 = nullptr;
};

} // namespace importing
