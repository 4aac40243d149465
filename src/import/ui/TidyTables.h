#pragma once

#include <QTabWidget>

#include "import/tidy/Proposal.h"
#include "platform/grid/FlexGrid.h"

namespace grid {
class CellListEditor;
class CellTextEditor;
class FlexGridView;
class GridEditor;
} // namespace grid

namespace importing {

/// The tables below a sheet that is to be tidied: what is open and noticed, which class a text
/// means, what marks without a number mean. The last two can be changed.
class TidyTables : public QTabWidget
{
    Q_OBJECT

public:
    explicit TidyTables(QWidget* parent);

    void show(const tidy::Proposal& proposal);
    using QTabWidget::show;

Q_SIGNALS:
    /// The user wrote a number for the class of this row, counted from 0.
    void classChosen(int row, double number);
    /// The user wrote this for the class of a row, which is no number of a class.
    void classRefused(const QString& text);
    /// The user picked a use, among markUses, for the mark of this row.
    void markChosen(int row, int use);

private:
    grid::FlexGridView* addTable(const QString& name, const QString& caption, grid::FlexGrid& grid);
    void editClasses();
    void editMarks();
    void takeClass();
    void takeMark(int row);

    grid::FlexGrid m_notes;
    grid::FlexGrid m_classes;
    grid::FlexGrid m_marks;
    grid::FlexGridView* gridNotes = nullptr;
    grid::FlexGridView* gridClasses = nullptr;
    grid::FlexGridView* gridMarks = nullptr;
    grid::GridEditor* m_classEditor = nullptr;
    grid::GridEditor* m_markEditor = nullptr;
    /// The row of a class that was typed and not yet taken; 0 for none.
    int m_typedRow = 0;
};

} // namespace importing
