#pragma once

#include <memory>

#include <QMainWindow>

#include "platform/grid/FlexGrid.h"
#include "platform/widgets/ScreenDialogs.h"
#include "shell/NextStep.h"
#include "shell/RecentFiles.h"
#include "shell/ui/CopyMenu.h"
#include "shell/ui/MainMenu.h"
#include "shell/ui/MenuScreens.h"
#include "workbench/ui/FormKaoShi.h"

class QDockWidget;
class QMenu;

namespace grid {
class FlexGridView;
}

namespace shell {

class EmptySide;
class GridFigures;
class ResultHead;
class WindowLayout;

/// The program's frame: the menus, the result grid, and the exam workbench beside or above it.
class AFormMain : public QMainWindow
{
    Q_OBJECT

public:
    AFormMain(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs);
    ~AFormMain() override;

    /// Opens the library named on the command line ("" for none) and fills the recent list. What
    /// killed conversions left goes.
    void start(const QString& commandLine);

    /// Puts the path of the open library into the title.
    void ShowInfo();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildGrid();
    void buildWorkbench();
    void connectMenu();
    void connectItem(const QString& name, void (AFormMain::*handler)());
    void connectScreen(const QString& name, void (MenuScreens::*open)());
    void connectEmptySide();
    void connectRecent();
    void connectCopies();

    /// "" when no library is open.
    QString openPath() const;
    void takeLibrary();
    void hideResult();
    /// Whether a library that is opened goes to the top of the recent list.
    enum class RecentOrder { Renew, Keep };

    /// Unless the user stays with what is not saved. An old one is offered for conversion; what it
    /// is converted to is new in the recent list.
    void openLibrary(const QString& path, RecentOrder order);
    /// The library that the user has an old one converted to.
    void openConverted(const QString& oldPath);
    void openNow(const QString& path, RecentOrder order);
    void openRecent(const QString& file);
    /// The user's own copy of the demonstration, made if there is none.
    void openDemo();
    /// Opens the screen of a step, or runs it.
    void takeStep(Step step);
    void takeDropped(const QString& file);
    void showGrid(workbench::AfterQuery afterwards);
    void showWorkbench();
    void showRecent(const QString& path);

    void mfNew_Click();
    void mfOpen_Click();
    void mfREC_Click(int index);
    void mfSaveAs_Click();
    void Mfexit_Click();
    void Hzt_Click();
    void mUpdate_Click();
    void mMfgToXls_Click();
    void meSCKS_Click();
    void eraseExams();
    /// "口径" of the report that is chosen, or else of the one that is shown.
    void explainChosen();
    void explainShown();

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    MenuScreens m_screens;
    CopyMenu m_copies;
    RecentFiles m_recent;
    MainMenu m_menu;
    grid::FlexGrid m_grid;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    GridFigures* m_figures = nullptr;
    ResultHead* m_head = nullptr;
    QMenu* mTC = nullptr;
    QDockWidget* m_panel = nullptr;
    /// The library that the grid's content stems from.
    QString m_shownLibrary;
    workbench::FormKaoShi* m_workbench = nullptr;
    EmptySide* m_emptySide = nullptr;
    std::unique_ptr<WindowLayout> m_layout;
};

} // namespace shell
