#include "platform/grid/ui/GridCellDelegate.h"

#include <QPainter>

#include "platform/grid/ui/FlexGridView.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

constexpr int TextMargin = 3;

struct Colors
{
    QPalette::ColorRole ground;
    QPalette::ColorRole text;
};

Colors colors(const FlexGridView& view, const QStyleOptionViewItem& option,
              const QModelIndex& index)
{
    if (option.state & QStyle::State_Selected)
        return {QPalette::Highlight, QPalette::HighlightedText};
    if (view.isFixed(index.row(), index.column()))
        return {QPalette::Button, QPalette::ButtonText};
    return {QPalette::Base, QPalette::Text};
}

/// The text of one line is cut with "…" where it does not fit; one with breaks stays whole.
QString fitting(const QString& text, const QFontMetrics& metrics, int width)
{
    const int letters = int(text.size());
    // No sign is wider than two average ones of an East Asian font.
    if (letters * metrics.maxWidth() <= width || metrics.horizontalAdvance(text) <= width)
        return text;
    return metrics.elidedText(text, Qt::ElideRight, width);
}

} // namespace

GridCellDelegate::GridCellDelegate(FlexGridView* view) : QStyledItemDelegate(view), m_view(view) {}

void GridCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    const auto [ground, ink] = colors(*m_view, option, index);
    painter->fillRect(option.rect, option.palette.brush(ground));
    if (m_view->isCurrentCell(index) && m_view->hasFocus()) {
        painter->setPen(QPen(option.palette.color(ink), 0, Qt::DotLine));
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    QString text = index.data(Qt::DisplayRole).toString();
    if (text.isEmpty())
        return;
    const QRect area = textArea(option.rect, index).adjusted(TextMargin, 0, -TextMargin, 0);
    int flags = index.data(Qt::TextAlignmentRole).toInt();
    text.replace(u"\r\n"_s, u"\n"_s);
    if (text.contains(u'\n') || m_view->wordWrap())
        flags |= m_view->wordWrap() ? Qt::TextWordWrap : 0;
    else
        text = fitting(text, option.fontMetrics, area.width());
    painter->setPen(option.palette.color(ink));
    painter->drawText(area, flags, text);
}

QRect GridCellDelegate::textArea(const QRect& cell, const QModelIndex& index) const
{
    if (m_view->columnSpan(index.row(), index.column()) == 1
        && m_view->rowSpan(index.row(), index.column()) == 1)
        return cell;
    const QRect seen = cell & m_view->shownPart(index.row(), index.column());
    return seen.isEmpty() ? cell : seen;
}

} // namespace grid
