#include "import/ui/ColumnChoices.h"

#include <QKeyEvent>
#include <QSignalBlocker>

#include "import/ui/ChoiceBox.h"
#include "platform/grid/ui/EditKeys.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/widgets/Screen.h"

namespace importing {

using namespace Qt::StringLiterals;

ColumnChoices::ColumnChoices(grid::FlexGridView* view) : QObject(view), m_view(view)
{
    m_view->installEventFilter(this);
    m_view->viewport()->installEventFilter(this);
    connect(m_view, &grid::FlexGridView::scrolled, this, &ColumnChoices::place);
    connect(m_view, &grid::FlexGridView::columnDragged, this, &ColumnChoices::place);
}

void ColumnChoices::show(const QStringList& entries, const std::vector<Column>& columns)
{
    if (entries != m_entries)
        setCount(0);
    m_entries = entries;
    setCount(columns.size());
    for (size_t i = 0; i < columns.size(); ++i) {
        const QSignalBlocker quiet(m_boxes[i]);
        m_boxes[i]->setCurrentIndex(columns[i].entry);
        m_boxes[i]->setAccessibleName(columns[i].name);
        m_boxes[i]->setToolTip(columns[i].tip.toHtmlEscaped());
    }
    place();
}

void ColumnChoices::setCount(size_t count)
{
    while (m_boxes.size() > count) {
        delete m_boxes.back();
        m_boxes.pop_back();
    }
    while (m_boxes.size() < count)
        m_boxes.push_back(makeBox(int(m_boxes.size())));
}

QComboBox* ColumnChoices::makeBox(int column)
{
    auto* box = widgets::named(new ChoiceBox(m_view->viewport()),
                               u"comboColumn%1"_s.arg(column + 1), QString());
    box->addItems(m_entries);
    box->setPlaceholderText(u"请选择"_s);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMaxVisibleItems(int(m_entries.size()));
    box->installEventFilter(this);
    connect(box, &QComboBox::activated, this,
            [this, column](int entry) { Q_EMIT chosen(column, entry); });
    // Tab comes to the boxes behind the grid that they belong to.
    QWidget::setTabOrder(m_boxes.empty() ? static_cast<QWidget*>(m_view) : m_boxes.back(), box);
    box->show();
    return box;
}

/// The boxes follow their columns. One that its column's part of the view does not hold stands
/// outside, where Tab still comes to it.
void ColumnChoices::place()
{
    for (size_t i = 0; i < m_boxes.size(); ++i) {
        const int col = m_view->grid().FixedCols + int(i);
        const QRect cell = m_view->visualRect(m_view->model()->index(0, col));
        const QRect seen = cell & m_view->shownPart(0, col);
        constexpr int leastSeen = 30;
        m_boxes[i]->setGeometry(
            seen.width() >= leastSeen ? seen : cell.translated(-cell.right() - cell.width(), 0));
    }
}

bool ColumnChoices::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_view)
        return openByKey(*event);
    if (watched == m_view->viewport()) {
        if (event->type() == QEvent::Resize)
            place();
        return false;
    }
    const auto box = std::find(m_boxes.begin(), m_boxes.end(), watched);
    if (box == m_boxes.end())
        return false;
    if (event->type() == QEvent::FocusIn) {
        const int col = m_view->grid().FixedCols + int(box - m_boxes.begin());
        m_view->scrollTo(m_view->model()->index(m_view->grid().Row, col));
    }
    return false;
}

bool ColumnChoices::openByKey(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const grid::EditKey key = grid::editKey(static_cast<const QKeyEvent&>(event));
    const int column = m_view->grid().Col - m_view->grid().FixedCols;
    if ((key != grid::EditKey::Open && key != grid::EditKey::OpenList) || column < 0
        || column >= int(m_boxes.size()))
        return false;
    m_boxes[size_t(column)]->setFocus();
    m_boxes[size_t(column)]->showPopup();
    return true;
}

} // namespace importing
