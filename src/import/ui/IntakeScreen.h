#pragma once

#include <functional>
#include <optional>

#include <QDateTime>
#include <QFileSystemWatcher>

#include "import/WorkbookIntake.h"
#include "import/preview/Preview.h"
#include "import/tidy/Proposal.h"
#include "library/ScoreLibrary.h"
#include "library/ui/BackupBox.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;
class QGridLayout;
class QHBoxLayout;
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
    /// Takes a workbook that is open already, as if `path`, the file that it stems from, had been
    /// browsed to.
    virtual void use(excel::Application& application, excel::Workbook& book, const QString& path);
    /// Chooses a sheet, as if it were picked from the list; nothing happens for another workbook,
    /// or while an import runs or its preview is open.
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

    /// Offers to tidy the workbook for this import; called ahead of layOutWorkbook.
    void makeTidyButton(tidy::Goal goal);

    /// Lays out the fields for the workbook in the first three rows of three columns.
    void layOutWorkbook(QGridLayout* layout, const QString& caption);
    /// Lays out the buttons in a row below the others.
    void layOutButtons(QGridLayout* layout);

    /// Adds 预览…: what `previewed` gives is shown, and 导入 there begins the import by `import`.
    /// To be called behind layOutButtons.
    void offerPreview(std::function<std::optional<Preview>()> previewed,
                      std::function<void()> import);

    /// Asks for a workbook and opens it.
    void choose(const QString& filter);
    Backup backup() const;
    /// Whether the chosen sheet looks as the import wants it.
    virtual bool isSheetAsWanted() const;
    /// Names the way out if the import refused the sheet.
    void tellOfTidying(ImportResult result);

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    Applications& m_applications;
    WorkbookIntake m_intake;
    QLineEdit* Text1 = nullptr;
    QPushButton* Command3 = nullptr;
    QLabel* LabelFault = nullptr;
    QPushButton* buttonTidy = nullptr;
    QComboBox* Combo1 = nullptr;
    library::BackupBox* CheckBackup = nullptr;
    QLabel* Label4 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    /// Null on a screen without a preview.
    QPushButton* buttonPreview = nullptr;

private:
    void build();
    void showWorkbook(const QString& path);
    void listSheets();
    /// The preview, or nothing once it was told why there is none.
    std::optional<Preview> lookAhead(const std::function<std::optional<Preview>()>& previewed);
    void showPreview(const std::function<std::optional<Preview>()>& previewed,
                     const std::function<void()>& import);
    void watch(const QString& path);
    /// The workbook stays as it was read; the user is told that its file did not.
    void noteFileChange(const QString& path);
    void showFault(const QString& fault);
    void tidyWorkbook();

    QFileSystemWatcher m_watcher;
    QDateTime m_openedVersion;
    QHBoxLayout* m_buttons = nullptr;
    bool m_isPreviewOpen = false;
    tidy::Goal m_tidyGoal = tidy::Goal::ExamScores;
};

} // namespace importing
