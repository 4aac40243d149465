#pragma once

#include <optional>

#include "import/ShownSheet.h"
#include "import/WorkbookIntake.h"
#include "import/tidy/RememberedMappings.h"
#include "import/tidy/Tidy.h"
#include "library/ScoreLibrary.h"
#include "platform/widgets/DialogScreen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;

namespace grid {
class FlexGridView;
}

namespace importing {

class ColumnChoices;
class TidyTables;

/// A workbook that was tidied: open, shown and not saved.
struct TidiedBook
{
    excel::Application* application = nullptr;
    excel::Workbook* book = nullptr;
    /// The file that it stems from.
    QString path;
    tidy::Goal goal = tidy::Goal::ExamScores;
};

/// "整理工作簿": how a workbook is read is shown and changed, and a new workbook in the form that
/// the import wants is made of it. Esc closes, Enter makes it once everything is decided.
class TidyScreen : public widgets::DialogScreen
{
    Q_OBJECT

public:
    /// Whether the user says what the workbook is tidied for.
    enum class GoalChoice { Free, Fixed };

    TidyScreen(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
               Applications& applications, tidy::Goal goal, GoalChoice goalChoice, QWidget* parent);

    /// Reads a workbook file and proposes. One that cannot be read leaves the screen without any.
    void browse(const QString& path);
    /// Proposes for a workbook that is open already and belongs to the file `path`.
    void use(excel::Workbook& book, const QString& path);
    /// Shows a sheet of the workbook.
    void showSheet(const QString& name);

    /// What was made when the screen closed; nothing if it was left otherwise.
    const std::optional<TidiedBook>& tidiedBook() const { return m_tidied; }

    void done(int result) override;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeWidgets(GoalChoice goalChoice);
    void makeGrid();
    void makeHeadingBoxes();
    QLayout* workbookRow();
    QLayout* choicesRow();
    QLayout* sheetRow();
    QLayout* buttonsRow();
    void layOut();
    void connectWidgets();
    void readSources();
    void chooseFile();

    tidy::Sources sources() const { return {m_aliases, m_roster}; }
    tidy::Goal goal() const;
    void propose();
    /// Does what changes the proposal, has it reconsidered and shows it.
    template <class Change> void change(const Change& apply);
    tidy::SheetProposal* current();

    void showProposal();
    void showSheets();
    void showCurrent();
    void showColumns(const tidy::SheetProposal& sheet);
    void showClassSources(const tidy::SheetProposal& sheet);
    void showHeading(const tidy::SheetProposal& sheet);

    void chooseRowFate(int row);
    void refuseClass(const QString& text);
    void chooseHeadingRows();
    void tidyUp();
    void showTidied(std::unique_ptr<excel::Workbook> made);

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    Applications& m_applications;
    tidy::Aliases m_aliases{QStringList()};
    tidy::Roster m_roster;
    tidy::RememberedMappings m_remembered;
    std::vector<tidy::ColumnUse> m_uses;
    std::vector<tidy::ClassSource> m_classSources;
    /// Where files are read that this screen was given no workbook of.
    excel::Application m_source;
    excel::Workbook* m_book = nullptr;
    QString m_path;
    tidy::Proposal m_proposal;
    ShownSheet m_shown;
    std::optional<TidiedBook> m_tidied;

    QLineEdit* textBook = nullptr;
    QPushButton* buttonBrowse = nullptr;
    QLabel* labelFault = nullptr;
    QComboBox* comboGoal = nullptr;
    QListWidget* listSheets = nullptr;
    QSpinBox* spinHeadingFirst = nullptr;
    QSpinBox* spinHeadingCount = nullptr;
    QComboBox* comboClassFrom = nullptr;
    grid::FlexGridView* gridSheet = nullptr;
    ColumnChoices* m_choices = nullptr;
    QLabel* labelCounts = nullptr;
    QLabel* labelQuestions = nullptr;
    TidyTables* m_tables = nullptr;
    QPushButton* buttonTidy = nullptr;
    QPushButton* buttonClose = nullptr;
};

} // namespace importing
