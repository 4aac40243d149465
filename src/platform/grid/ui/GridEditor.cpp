#include "platform/grid/ui/GridEditor.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "platform/grid/ui/CellEditors.h"
#include "platform/grid/ui/CellListEditor.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/EditKeys.h"
#include "platform/grid/ui/FlexGridView.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

const QString separator = u","_s;

} // namespace

GridEditor::GridEditor(FlexGridView* view, CellTextEditor* box, CellListEditor* list,
                       CellDesign design)
    : QObject(view), m_view(view), m_box(box), m_list(list), m_design(std::move(design))
{
    m_view->installEventFilter(this);
    m_box->installEventFilter(this);
    m_box->hide();
    connect(m_view, &FlexGridView::cellReleased, this, &GridEditor::open);
    connect(m_box, &QLineEdit::textEdited, this, &GridEditor::write);
    connect(m_box, &CellTextEditor::entered, this, &GridEditor::entered);
    connect(m_box, &CellTextEditor::moved, this, &GridEditor::moveBy);
    connect(m_box, &CellTextEditor::cancelled, this, &GridEditor::cancel);
    if (m_list == nullptr)
        return;
    m_list->hide();
    connect(m_list, &CellListEditor::changed, this, &GridEditor::takePicked);
    connect(m_list, &CellListEditor::finished, this, &GridEditor::HideTS);
    connect(m_list, &CellListEditor::moved, this, &GridEditor::moveBy);
    connect(m_list, &CellListEditor::cancelled, this, &GridEditor::cancel);
}

CellEditing GridEditor::editing(int row, int col) const
{
    const bool isFixed = m_view->isFixed(row, col);
    return isFixed ? CellEditing::None : m_design.editing(row, col);
}

void GridEditor::open(int row, int col)
{
    HideTS();
    m_row = row;
    m_col = col;
    const CellEditing kind = editing(row, col);
    if (kind == CellEditing::None) {
        Q_EMIT activated(row, col);
        return;
    }
    m_before = m_view->grid().TextMatrix(row, col);
    // The list comes first: the keyboard ends in the text box.
    if (kind != CellEditing::Text)
        openList();
    if (kind != CellEditing::List)
        openText();
    Q_EMIT opened(row, col);
}

void GridEditor::openText()
{
    ShowTextInMFG(m_box, m_view, m_row, m_col);
}

void GridEditor::openList()
{
    if (const std::optional<QStringList> entries = m_design.entries(m_row, m_col))
        m_list->setEntries(*entries);
    ShowListInMFG(m_list, m_view, m_row, m_col, m_design.listHeight, separator);
    m_list->takeKeyboard();
}

void GridEditor::HideTS()
{
    grid::HideTS(m_box);
    if (m_list != nullptr)
        grid::HideTS(m_list);
}

bool GridEditor::isOpen() const
{
    return m_box->isVisible() || (m_list != nullptr && m_list->isVisible());
}

bool GridEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (watched == m_view)
        return pressInGrid(key);
    const bool isForList =
        m_list != nullptr && m_list->isVisible() && editKey(key) == EditKey::OpenList;
    if (isForList)
        m_list->takeKeyboard();
    return isForList;
}

bool GridEditor::pressInGrid(const QKeyEvent& key)
{
    const int row = m_view->grid().Row;
    const int col = m_view->grid().Col;
    const CellEditing kind = editing(row, col);
    const bool hasText = kind == CellEditing::Text || kind == CellEditing::TextAndList;
    const bool hasList = kind == CellEditing::List || kind == CellEditing::TextAndList;
    switch (editKey(key)) {
    case EditKey::Open:
        open(row, col);
        return true;
    case EditKey::OpenList:
        if (!hasList)
            return false;
        open(row, col);
        m_list->takeKeyboard();
        return true;
    case EditKey::Type:
        if (!hasText && !isSpace(key))
            return false;
        open(row, col);
        if (hasText)
            type(key);
        return true;
    case EditKey::None:
        break;
    }
    return false;
}

/// The character takes the place of what the cell holds.
void GridEditor::type(const QKeyEvent& key)
{
    if (!m_box->isVisible())
        return;
    m_box->selectAll();
    QKeyEvent typed(key.type(), key.key(), key.modifiers(), key.text());
    QCoreApplication::sendEvent(m_box, &typed);
}

/// Cells with a text box are opened at once, others become the current one.
void GridEditor::moveBy(int rows, int cols)
{
    HideTS();
    const int row = m_row + rows;
    const int col = m_col + cols;
    const FlexGrid& grid = m_view->grid();
    if (row < 0 || row >= grid.Rows() || col < 0 || col >= grid.Cols() || m_view->isFixed(row, col))
        return;
    const CellEditing kind = editing(row, col);
    if (kind == CellEditing::Text || kind == CellEditing::TextAndList)
        open(row, col);
    else
        m_view->select(row, col, row, col);
}

void GridEditor::entered()
{
    if (m_design.afterEnter == AfterEnter::Down)
        moveBy(1, 0);
    else
        HideTS();
}

void GridEditor::cancel()
{
    HideTS();
    m_view->grid().setTextMatrix(m_row, m_col, m_before);
    m_view->refreshCell(m_row, m_col);
    Q_EMIT takenBack(m_row, m_col);
}

void GridEditor::write(const QString& text)
{
    m_view->grid().setTextMatrix(m_row, m_col, text);
    m_view->refreshCell(m_row, m_col);
    Q_EMIT edited(m_row, m_col);
}

void GridEditor::takePicked()
{
    const QString text = m_list->picked().join(separator);
    m_box->setText(text);
    write(text);
}

} // namespace grid
