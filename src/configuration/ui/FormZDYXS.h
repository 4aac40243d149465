#pragma once

#include "configuration/CustomDisplay.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace grid {
class FlexGridView;
}

namespace configuration {

/// "自定义显示": which columns a browse or the export of scores shows, and in which order.
class FormZDYXS : public widgets::Screen
{
    Q_OBJECT

public:
    FormZDYXS(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
              QWidget* parent);

    /// What the workbench shows: the item's text, and the stream word for ComboKL. To be called
    /// before init.
    void setItem(const QString& item, const QString& streamWord);

    /// The same for an item whose list is that of all streams, saved under `key` alone: no stream
    /// is offered.
    void setItemOfAllStreams(const QString& item, const QString& key);

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
    void MSFlexGrid1_MouseUp(int MouseRow, int MouseCol);
    void takeSelection();
    void CommandUP_Click();
    void CommandDown_Click();
    void moveBlock(RowBlock (CustomDisplay::*step)(RowBlock));
    void Command1_Click();
    QString key() const;

    CustomDisplay m_display;
    /// The item's text, as in "原始分和名次".
    QString XMName;
    /// What an item of all streams is saved under; empty for the others.
    QString m_keyOfAllStreams;
    /// First and last row of the block that CommandUP and CommandDown move.
    int SelTop = 1;
    int SelBottom = 1;
    widgets::ScreenDialogs& m_dialogs;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    QComboBox* ComboKL = nullptr;
    QLabel* Label1 = nullptr;
    QPushButton* CommandUP = nullptr;
    QPushButton* CommandDown = nullptr;
    QPushButton* Command1 = nullptr;
};

} // namespace configuration
