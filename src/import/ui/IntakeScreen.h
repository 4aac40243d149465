#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>

#include "import/WorkbookIntake.h"
#include "library/ScoreLibrary.h"
#include "library/ui/BackupBox.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;
class QGridLayout;
class QLineEdit;

namespace importing {

/// What the import screens share: a workbook is chosen, and one of its sheets. Closing the screen
/// by its frame leaves the workbook in view.
class IntakeScreen : public widgets::Screen
{
    Q_OBJECT

public:
    /// Opens the workbook and lists its sheets. A file that cannot be opened leaves the list empty.
    virtual void browse(const QString& path);
    /// Chooses a sheet, as if it were picked from the list; nothing happens for another workbook or
    /// while an import runs.
    void chooseSheet(const excel::Workbook& book, const QString& sheet);

Q_SIGNALS:
    /// A workbook was opened for this screen.
    void workbookShown(excel::Application& application, excel::Workbook& book);
    /// Another sheet stands in the list. The workbook may have been closed by its window meanwhile.
    void sheetChosen(excel::Workbook& book, const QString& sheet);

protected:
    /// `name` and `caption` are those of the screen.
    IntakeScreen(const QString& name, const QString& caption, const SheetRules& rules,
                 library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                 Applications& applications, QWidget* parent);

    /// Lays out the fields for the workbook in the first three rows of three columns.
    void layOutWorkbook(QGridLayout* layout, const QString& caption);
    /// Lays out the buttons in a row below the others.
    void layOutButtons(QGridLayout* layout);

    /// Asks for a workbook and opens it.
    void choose(const QString& filter);
    Backup backup() const;

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    WorkbookIntake m_intake;
    QLineEdit* Text1 = nullptr;
    QPushButton* Command3 = nullptr;
    QLabel* LabelFault = nullptr;
    QComboBox* Combo1 = nullptr;
    library::BackupBox* CheckBackup = nullptr;
    QLabel* Label4 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;

private:
    void build();
    void listSheets();
    void watch(const QString& path);
    /// The workbook stays as it was read; the user is told that its file did not.
    void noteFileChange(const QString& path);
    void showFault(const QString& fault);

    QFileSystemWatcher m_watcher;
    QDateTime m_openedVersion;
};

} // namespace importing
