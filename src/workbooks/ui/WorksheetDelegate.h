#pragma once

#include <QStyledItemDelegate>

#include "workbooks/model/CellTable.h"

namespace excel {

class WorksheetView;

/// Draws the cells of a WorksheetView with their lines; texts run on over empty cells at their
/// right.
class WorksheetDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit WorksheetDelegate(WorksheetView* view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    struct RunningText;

    RunningText textRunningInto(int row, int column) const;
    void drawGround(QPainter* painter, const QStyleOptionViewItem& option,
                    const QModelIndex& index) const;
    void drawText(QPainter* painter, const QRectF& cell, int row, int column,
                  const RunningText& text) const;
    void drawBorders(QPainter* painter, const QRectF& cell, const CellRange& block) const;

    const WorksheetView* m_view;
};

} // namespace excel
