#pragma once

#include "import/preview/PreviewTable.h"
#include "platform/widgets/DialogScreen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;

namespace grid {
class FlexGridView;
} // namespace grid

namespace importing {

/// "导入预览": what an import would do, to read, search, sort, copy and save. Accepted by 导入,
/// with which the import is to go on.
class PreviewScreen : public widgets::DialogScreen
{
    Q_OBJECT

public:
    PreviewScreen(Preview preview, widgets::ScreenDialogs& dialogs, QWidget* parent);

private:
    void makeHead();
    void makeGrid();
    void makeButtons();
    void layOut();
    void showKind();
    void sortBy(int column);
    void showMenu(const QPoint& place);
    void save();

    PreviewTable m_table;
    widgets::ScreenDialogs& m_dialogs;
    QLabel* labelWarning = nullptr;
    QLabel* labelHeadline = nullptr;
    QLabel* labelNotes = nullptr;
    QComboBox* comboKind = nullptr;
    grid::FlexGridView* gridPreview = nullptr;
    QPushButton* buttonSave = nullptr;
    QPushButton* buttonImport = nullptr;
    QPushButton* buttonClose = nullptr;
};

} // namespace importing
