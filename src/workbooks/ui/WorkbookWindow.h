#pragma once

#include <vector>

#include <QMainWindow>
#include <QTemporaryDir>

#include "workbooks/ui/WorkbookOutput.h"

class QLabel;
class QTabBar;
class QToolBar;

namespace excel {

class WorksheetView;

/// Shows an open workbook: the sheet in front, the others by tabs. Closing the window closes the
/// workbook; one with changes that were not saved asks first.
class WorkbookWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// `name` is what a workbook without a file is called. The workbook must outlive the window or
    /// its `giveUp`.
    WorkbookWindow(Workbook& book, const QString& name, Desktop desktop = {},
                   QWidget* parent = nullptr);

    /// The workbook, null after `giveUp`.
    Workbook* workbook() const { return m_book; }

    /// Brings a sheet forward; nothing happens for a name that is not among the tabs.
    void showSheet(const QString& name);

    /// Shows what the workbook holds now, with the sheet in front that it has in front.
    void refresh();

    /// Goes without asking and without touching the workbook, which is closed already.
    void giveUp();

Q_SIGNALS:
    /// The user chose a sheet by its tab.
    void sheetChosen(excel::Workbook& book, const QString& sheet);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    using Handler = void (WorkbookWindow::*)();

    void buildSheets();
    void buildActions();
    QAction* action(const QString& name, const QString& caption, const QKeySequence& keys,
                    Handler handler);
    void buildFileMenu(QToolBar* bar);
    void buildEditMenu(QToolBar* bar);
    void showTitle();
    void showTabs();
    void showFront();
    void bringForward(int tab);
    void tabChosen(int tab);
    void stepTab(int step);
    void showCell(int row, int column);
    bool mayClose();
    bool lossesAccepted();

    void saveAs();
    void print();
    void exportToPdf();
    void openOutsideCopy();
    void shut() { close(); }
    void copy();
    void selectAll();
    void openFind();
    void findNext();
    void findPrevious();
    void nextSheet() { stepTab(1); }
    void previousSheet() { stepTab(-1); }

    Workbook* m_book;
    QString m_name;
    /// The file that the workbook was read from, empty for one that the program made. What was
    /// read is there to be looked at and needs no saving.
    QString m_source;
    bool m_lossesAccepted = false; // what of that file is not kept was told
    Desktop m_desktop;
    QTemporaryDir m_copies;
    quint64 m_shownRevision = 0;
    std::vector<Worksheet*> m_tabs;
    WorksheetView* m_view = nullptr;
    QTabBar* SheetTabs = nullptr;
    QLabel* CellText = nullptr;
};

} // namespace excel
