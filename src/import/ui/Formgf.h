#pragma once

#include "import/ErrorList.h"
#include "platform/widgets/Screen.h"

namespace grid {
class CellTextEditor;
class ColumnEditor;
class FlexGridView;
} // namespace grid

class QCheckBox;
class QLabel;

namespace importing {

/// "修改错误成绩": the bad scores of an import, each to be answered by a new value.
class Formgf : public widgets::Screen
{
    Q_OBJECT

public:
    /// When the list is shown. After the import nothing that is typed can be stored any more.
    enum class Shown { DuringImport, AfterImport };

    Formgf(ImportState& state, QWidget* parent, Shown shown = Shown::DuringImport);

private:
    void makeWidgets(ImportState& state);
    void makeStoreBox(Shown shown);
    void connectEditor();
    void CheckStore_Click();
    void showNote();
    void Text1_Enter();
    void Command2_Click();

    ErrorList::Entry answer();

    ErrorList m_list;
    grid::ColumnEditor* m_editor = nullptr;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    grid::CellTextEditor* Text1 = nullptr;
    QCheckBox* CheckStore = nullptr;
    QLabel* LabelStore = nullptr;
};

} // namespace importing
