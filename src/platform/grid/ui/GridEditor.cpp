#include "platform/grid/ui/GridEditor.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QPointer>

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
    m_view->setTypedInto([editor = QPointer(this)](int row, int col) {
        return editor && editor->takesText(row, col);
    });
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

bool GridEditor::takesText(int row, int col) const
{
    const CellEditing kind = editing(row, col);
    return kind == CellEditing::Text || kind == CellEditing::TextAndList;
}

void GridEditor::open(int row, int col)
{
    openWith(row, col, Keyboard::InBox);
}

void GridEditor::openWith(int row, int col, Keyboard keyboard)
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
        openList(keyboard);
    if (kind != CellEditing::List)
        ShowTextInMFG(m_box, m_view, m_row, m_col, keyboard);
    Q_EMIT opened(row, col);
}

void GridEditor::openList(Keyboard keyboard)
{
    if (const std::optional<QStringList> entries = m_design.entries(m_row, m_col))
        m_list->setEntries(*entries);
    ShowListInMFG(m_list, m_view, m_row, m_col, m_design.listHeight, separator);
    if (keyboard == Keyboard::InBox)
        m_list->takeKeyboard();
}

void GridEditor::HideTS()
{
    // What was composed so far goes into the cell.
    if (m_composing)
        QGuiApplication::inputMethod()->commit();
    m_composing = false;
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
    if (watched == m_view && event->type() == QEvent::InputMethod)
        return compose(static_cast<QInputMethodEvent*>(event));
    if (event->type() != QEvent::KeyPress)
        return false;
    if (watched == m_view && m_composing)
        return QCoreApplication::sendEvent(m_box, event);
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
    const bool hasText = takesText(row, col);
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

/// What an input method sends to the grid goes to the box.
bool GridEditor::compose(QInputMethodEvent* event)
{
    const bool goesOn = !event->preeditString().isEmpty();
    const bool isShown = m_composing && m_box->isVisible();
    if (!isShown && (goesOn || !event->commitString().isEmpty()))
        startComposing();
    if (!m_composing)
        return false;
    QCoreApplication::sendEvent(m_box, event);
    if (!goesOn)
        endComposing();
    return true;
}

/// The keyboard stays in the grid: when it goes elsewhere, an input method ends what it composes.
void GridEditor::startComposing()
{
    m_composing = false;
    const int row = m_view->grid().Row;
    const int col = m_view->grid().Col;
    if (!takesText(row, col))
        return;
    openWith(row, col, Keyboard::InGrid);
    m_box->selectAll();
    m_composing = m_box->isVisible();
}

/// A composition that was given up leaves what the cell held.
void GridEditor::endComposing()
{
    m_composing = false;
    if (m_box->text().isEmpty())
        cancel();
    else
        m_box->setFocus(Qt::OtherFocusReason);
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
    if (takesText(row, col))
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
    // The box is emptied for what is composed.
    if (m_composing && text.isEmpty())
        return;
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
