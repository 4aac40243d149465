#pragma once

#include "configuration/CustomDisplay.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;
class QPushButton;

namespace grid {
class FlexGridView;
}

namespace configuration {

/// "自定义显示": which columns a browse shows, and in which order.
class FormZDYXS : public widgets::Screen
{
    Q_OBJECT

public:
    FormZDYXS(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
              QWidget* parent);

    /// What the workbench shows: the item's text, and the stream word for ComboKL. To be called
    /// before init.
    void setItem(const QString& XMName, const QString& streamWord);

    /// Fills the grid from the library's DisplayItems.
    void init();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void build();
    void connectControls();
    QWidget* makeStrip();
    void Form_Load();
    void Form_Resize();
    void clickCell(int row, int col);
    void moveBlock(void (CustomDisplay::*handler)());

    CustomDisplay m_display;
    widgets::ScreenDialogs& m_dialogs;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    QComboBox* ComboKL = nullptr;
    QPushButton* CommandUP = nullptr;
    QPushButton* CommandDown = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
};

} // namespace configuration
