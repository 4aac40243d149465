#pragma once

#include "import/ErrorList.h"
#include "platform/widgets/Screen.h"

namespace grid {
class CellTextEditor;
class ColumnEditor;
class FlexGridView;
} // namespace grid

namespace importing {

/// "修改错误成绩": the bad scores of an import, each to be answered by a new value.
class Formgf : public widgets::Screen
{
    Q_OBJECT

public:
    Formgf(ImportState& state, QWidget* parent);

private:
    void makeWidgets(ImportState& state);
    void connectEditor();
    void Text1_Enter();
    void Command2_Click();

    ErrorList::Entry answer();

    ErrorList m_list;
    grid::ColumnEditor* m_editor = nullptr;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    grid::CellTextEditor* Text1 = nullptr;
};

} // namespace importing
