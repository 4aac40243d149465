#pragma once

#include <functional>

#include "platform/grid/ui/FlexGridView.h"
#include "platform/grid/ui/GridCellDelegate.h"
#include "platform/widgets/MixedColor.h"

namespace importing {

/// Draws the cells of a grid, those of rows that are left out in grey.
class LeftOutRowsDelegate : public grid::GridCellDelegate
{
public:
    LeftOutRowsDelegate(grid::FlexGridView* view, std::function<bool(int row)> isLeftOut)
        : GridCellDelegate(view), m_isLeftOut(std::move(isLeftOut))
    {
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyleOptionViewItem shown = option;
        if (m_isLeftOut(index.row())) {
            for (const auto& [ink, ground] : {std::pair(QPalette::Text, QPalette::Base),
                                              std::pair(QPalette::ButtonText, QPalette::Button)})
                shown.palette.setColor(ink, widgets::mixedColor(option.palette.color(ink),
                                                                option.palette.color(ground), 0.5));
        }
        GridCellDelegate::paint(painter, shown, index);
    }

private:
    std::function<bool(int row)> m_isLeftOut;
};

} // namespace importing
