#pragma once

#include <QStyledItemDelegate>

namespace grid {

class FlexGridView;

/// Draws the cells of a FlexGridView: fixed ones as headings, and the text of a merged block in the
/// middle of what is seen of it.
class GridCellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit GridCellDelegate(FlexGridView* view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    QRect textArea(const QRect& cell, const QModelIndex& index) const;

    const FlexGridView* m_view;
};

} // namespace grid
