#pragma once

#include <array>
#include <optional>

#include "platform/grid/FlexGrid.h"
#include "platform/widgets/Backdrop.h"
#include "platform/widgets/ScreenDialogs.h"
#include "scoring/Scoring.h"
#include "statistics/ReportContext.h"
#include "workbench/ui/Selection.h"
#include "workbooks/model/Application.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace workbench {

class NoteLabel;

/// The exam workbench: what is chosen in its lists, and the commands for the chosen exams. Results
/// go to the main window's grid.
class FormKaoShi : public widgets::Backdrop
{
    Q_OBJECT

public:
    FormKaoShi(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
               excel::Applications& applications, grid::FlexGrid& mainGrid,
               QWidget* parent = nullptr);

    /// Fills all lists from the open library.
    void init();

    /// The exams that are selected in ListKSMC, in its order.
    QStringList selectedExams() const { return m_selection.ListKSMC.selectedTexts(); }

    /// Runs a report as "执行统计" does.
    void runStatistics(const ReportRequest& request);

    /// Presses "计算总分".
    void computeTotals();

    /// The report that the lists stand at.
    ReportRequest chosenReport() const { return m_selection.reportRequest(); }

    /// The report that the main grid shows; nothing for browsed scores.
    const std::optional<ReportRequest>& shownReport() const { return m_shownReport; }

    /// The notes on what the main grid shows.
    const std::vector<ReportNote>& resultNotes() const { return m_resultNotes; }

    /// What a cell of the main grid stands for, if a report filled it.
    std::optional<statistics::Figure> figureAt(int row, int col) const
    {
        return m_reports.figures.at(m_grid, row, col);
    }

    /// The columns that a browse would show now.
    QStringList columnsInForce() const;

Q_SIGNALS:
    /// The main grid was filled.
    void gridFilled(AfterQuery afterwards);
    /// "计算总分" has ended.
    void totalsComputed();
    /// "导入考试" was pressed.
    void importRequested();
    /// "考试信息" was chosen in the menu of the exams.
    void detailsRequested();
    /// "彻底删除所选考试" was chosen in the menu of the exams.
    void erasureRequested();
    /// "自定义显示" was pressed; DisplayItems hold what is shown now for this item and stream.
    void customDisplayRequested(const QString& item, const QString& stream);
    /// A library was opened or closed, as far as the commands go.
    void commandsAvailableChanged(Available available);

protected:
    /// Delete takes a sort key away; a click below a list's entries leaves what is chosen.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildExams(QGridLayout* layout);
    void buildExamMenu();
    void addExamEntry(const QString& name, const QString& caption, void (FormKaoShi::*chosen)());
    void buildClasses(QGridLayout* layout);
    void buildOrder(QGridLayout* layout);
    void buildCommands(QGridLayout* layout);
    QListWidget* makeList(const QString& name, const QString& heading, QGridLayout* layout,
                          int column, int characters);
    void connectLists();
    void connectCommands();
    void Form_Load();

    /// Shows the selection's state in the widgets.
    void showState();
    /// Takes what the widgets show into the selection, and rebuilds the SQL text.
    void takeState();
    /// The notes on what "执行统计" would do now.
    void showNotes();
    void moveExam(Direction direction);
    void OptionButton1_Click(int index);
    void Command1_Click();
    void CommandLLCJ_Click();
    void CommandZF_Click();
    void CommandZXTJ_Click();
    void Command2_Click();
    void CommandZDYXS_Click();

    library::ScoreLibrary& m_library;
    Selection m_selection;
    scoring::Scoring m_scoring;
    statistics::ReportContext m_reports;
    excel::Applications& m_applications;
    widgets::ScreenDialogs& m_dialogs;
    grid::FlexGrid& m_grid;
    std::optional<ReportRequest> m_shownReport;
    std::vector<ReportNote> m_resultNotes;
    /// True while the program itself changes the widgets.
    bool m_showing = false;

    QListWidget* ListKSMC = nullptr;
    QMenu* ExamMenu = nullptr;
    QListWidget* ListFW = nullptr;
    QListWidget* ListLB = nullptr;
    QListWidget* ListXM = nullptr;
    std::array<QRadioButton*, 3> OptionButton1{};
    std::array<QComboBox*, MostSortKeys> Combo1{};
    std::array<QComboBox*, MostSortKeys> Combo2{};
    QComboBox* Combo3 = nullptr;
    NoteLabel* LabelNote = nullptr;
    QCheckBox* CheckMin = nullptr;
    QPlainTextEdit* Text1 = nullptr;
    QWidget* Picture1 = nullptr;
    QLabel* LabelXX = nullptr;
    QPushButton* CommandUP = nullptr;
    QPushButton* CommandDown = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* CommandZXTJ = nullptr;
    QPushButton* CommandZHFX = nullptr;
    QPushButton* CommandJSZF = nullptr;
    QPushButton* CommandLLCJ = nullptr;
    QPushButton* CommandZDYXS = nullptr;
    QPushButton* CommandDRKS = nullptr;
};

} // namespace workbench
