#pragma once

#include <array>

#include "library/ScoreLibrary.h"
#include "workbench/Browse.h"
#include "workbench/ScoreQuery.h"
#include "workbench/StatisticsRun.h"
#include "workbench/ui/ChoiceList.h"

namespace workbench {

enum class Available { No, Yes };

/// What the workbench does once a command has filled the grid.
enum class AfterQuery { Stay, Minimise };

/// Which way an exam moves in the list.
enum class Direction { Up = 1, Down = -1 };

/// What a sort key shows while no column is chosen.
extern const QString SortPrompt;

/// An option button that stands for all streams, or for one.
struct StreamOption
{
    QString caption;
    bool visible = false;
};

/// The lists of the workbench and what they do among themselves, without their widgets: exams,
/// classes, categories, columns and order, and the SQL text that follows from them. The form shows
/// this state and takes its requests from it.
class Selection
{
public:
    explicit Selection(library::ScoreLibrary& scoreLibrary);

    ChoiceList ListKSMC; ///< exams
    ChoiceList ListFW;   ///< class numbers
    ChoiceList ListLB;   ///< values of 类别代码
    SingleList ListXM;   ///< family of columns to show
    /// All, and the streams; the one that is set is `option`.
    std::array<StreamOption, 3> OptionButton1;
    int option = 0;
    /// Columns to sort by.
    std::array<DropDown, MostSortKeys> Combo1;
    /// Their directions: index 0 ascending, 1 descending.
    std::array<SingleList, MostSortKeys> Combo2;
    DropDown Combo3;       ///< the statistics item
    QString Text1;         ///< the live SQL statement; the user may type another
    bool CheckMin = false; ///< minimise the workbench after a query
    /// No while no library is open.
    Available commandsAvailable = Available::No;

    /// Fills the fixed lists, then runs init.
    void fill();
    /// Fills all lists from the open library. Without one the lists keep their contents, and the
    /// commands are switched off.
    void init();
    /// Refills the list of exams and selects the first.
    void ShowKS();
    /// Switches the commands that need a library on or off.
    void KeYong(Available available);

    /// Sets the option button and selects the classes of its stream; index 0 selects all.
    void chooseStream(int index);
    /// Rebuilds Text1 and the shared CategoryFilter. To be called after every change of a list.
    void scTJ();
    /// Swaps the one selected exam with its neighbour.
    void MoveList(ChoiceList& list, Direction direction);

    /// As CheckMin says.
    AfterQuery afterQuery() const;
    /// The caption of the option that is set.
    QString streamWord() const;
    RowChoice rowChoice() const;
    BrowseRequest browseRequest() const;
    ReportRequest reportRequest() const;
    AnalysisRequest analysisRequest() const;

private:
    void fillSortColumns();
    void fillStatistics();
    void fillClasses();
    void fillCategories();

    library::ScoreLibrary& m_library;
};

} // namespace workbench
