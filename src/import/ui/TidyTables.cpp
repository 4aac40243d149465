#include "import/ui/TidyTables.h"

#include <QHeaderView>

#include "import/TidyTexts.h"
#include "import/tidy/ClassNames.h"
#include "platform/grid/ui/CellListEditor.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/grid/ui/GridEditor.h"
#include "platform/widgets/Screen.h"

namespace importing {

using namespace Qt::StringLiterals;
using grid::CellEditing;
using widgets::named;

namespace {

constexpr int shownLines = 5;

/// The columns of a table are as wide as their texts, the last one takes the rest.
void fitColumns(grid::FlexGrid& grid, const QFontMetrics& metrics, const grid::FlexGridView& view)
{
    constexpr int rowsMeasured = 200;
    constexpr int mostLetters = 30;
    for (int col = 0; col < grid.Cols(); ++col) {
        int width = 0;
        for (int row = 0; row < std::min(grid.Rows(), rowsMeasured); ++row)
            width = std::max(width, metrics.horizontalAdvance(grid.TextMatrix(row, col)));
        width = std::min(width, metrics.averageCharWidth() * mostLetters);
        grid.setColWidth(col, std::max(1, view.twips(width)));
    }
}

void refill(grid::FlexGrid& grid, grid::FlexGrid content, grid::FlexGridView& view)
{
    content.Row = grid.Row;
    content.RowSel = grid.Row;
    content.Col = grid.Col;
    content.ColSel = grid.Col;
    grid = std::move(content);
    fitColumns(grid, view.fontMetrics(), view);
    view.refresh();
}

/// The caption of a table with the number of its rows.
QString captionOf(const QString& caption, const grid::FlexGrid& grid)
{
    return grid.Rows() > 1 ? u"%1 %2"_s.arg(caption).arg(grid.Rows() - 1) : caption;
}

} // namespace

TidyTables::TidyTables(QWidget* parent) : QTabWidget(parent)
{
    gridNotes = addTable(u"gridNotes"_s, u"提示(&T)"_s, m_notes);
    gridClasses = addTable(u"gridClasses"_s, u"班级(&L)"_s, m_classes);
    gridMarks = addTable(u"gridMarks"_s, u"缺考等标记(&M)"_s, m_marks);
    setFixedHeight(fontMetrics().lineSpacing() * (shownLines + 3));
    editClasses();
    editMarks();
    show(tidy::Proposal());
}

grid::FlexGridView* TidyTables::addTable(const QString& name, const QString& caption,
                                         grid::FlexGrid& grid)
{
    auto* view =
        named(new grid::FlexGridView(grid, this), name, widgets::withoutAccessKey(caption));
    view->horizontalHeader()->setStretchLastSection(true);
    addTab(view, caption);
    return view;
}

void TidyTables::editClasses()
{
    auto* box = named(new grid::CellTextEditor(gridClasses), u"textClass"_s, u"班级"_s);
    m_classEditor = new grid::GridEditor(gridClasses, box, nullptr, {.editing = [](int, int col) {
                                             return col == ClassNumberColumn ? CellEditing::Text
                                                                             : CellEditing::None;
                                         }});
    connect(m_classEditor, &grid::GridEditor::edited, this, [this](int row) { m_typedRow = row; });
    connect(m_classEditor, &grid::GridEditor::takenBack, this, [this] { m_typedRow = 0; });
    // Queued: taking a class fills the table anew.
    connect(box, &QLineEdit::editingFinished, this, &TidyTables::takeClass, Qt::QueuedConnection);
    connect(m_classEditor, &grid::GridEditor::opened, this, &TidyTables::takeClass,
            Qt::QueuedConnection);
}

void TidyTables::takeClass()
{
    if (m_typedRow <= 0 || m_typedRow >= m_classes.Rows())
        return;
    const int row = std::exchange(m_typedRow, 0);
    const QString text = m_classes.TextMatrix(row, ClassNumberColumn);
    if (const std::optional<double> number = tidy::writtenClass(text))
        Q_EMIT classChosen(row - 1, *number);
    else
        Q_EMIT classRefused(text);
}

void TidyTables::editMarks()
{
    auto* box = named(new grid::CellTextEditor(gridMarks), u"textMarkUse"_s, u"作为"_s);
    auto* list = named(new grid::CellListEditor(grid::CellListEditor::Choice::One, gridMarks),
                       u"listMarkUses"_s, u"作为"_s);
    QStringList entries;
    for (const tidy::MarkUse use : markUses)
        entries.append(markUseText(use));
    list->setEntries(entries);
    m_markEditor = new grid::GridEditor(gridMarks, box, list,
                                        {.editing =
                                             [](int, int col) {
                                                 return col == MarkUseColumn ? CellEditing::List
                                                                             : CellEditing::None;
                                             },
                                         .entries = [](int, int) { return std::nullopt; }});
    connect(m_markEditor, &grid::GridEditor::edited, this, &TidyTables::takeMark,
            Qt::QueuedConnection);
}

void TidyTables::takeMark(int row)
{
    if (row < 1 || row >= m_marks.Rows())
        return;
    const QString text = m_marks.TextMatrix(row, MarkUseColumn);
    for (size_t use = 0; use < markUses.size(); ++use) {
        if (markUseText(markUses[use]) == text)
            Q_EMIT markChosen(row - 1, int(use));
    }
}

void TidyTables::show(const tidy::Proposal& proposal)
{
    m_classEditor->HideTS();
    m_markEditor->HideTS();
    refill(m_notes, notesGrid(proposal), *gridNotes);
    refill(m_classes, classesGrid(proposal), *gridClasses);
    refill(m_marks, marksGrid(proposal), *gridMarks);
    setTabText(0, captionOf(u"提示(&T)"_s, m_notes));
    setTabText(1, captionOf(u"班级(&L)"_s, m_classes));
    setTabText(2, captionOf(u"缺考等标记(&M)"_s, m_marks));
}

} // namespace importing
