#include "platform/grid/ui/RowWheel.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QWheelEvent>

#include "platform/grid/ui/FlexGridView.h"

namespace grid {

void RowWheel::turn(int angle)
{
    m_rest += angle;
    const int notches = m_rest / QWheelEvent::DefaultDeltasPerStep;
    m_rest -= notches * QWheelEvent::DefaultDeltasPerStep;
    if (notches != 0)
        scroll(-notches);
}

/// So many rows down, those that are hidden not counted.
void RowWheel::scroll(int rows)
{
    const QHeaderView* header = m_view.verticalHeader();
    const int first = std::min(m_view.grid().FixedRows, m_view.model()->rowCount() - 1);
    if (first < 0)
        return;
    int row = header->logicalIndexAt(m_view.fixedSize().height());
    for (int i = 0; i < std::abs(rows); ++i)
        row = nextShown(header, row, rows < 0 ? -1 : 1, first);
    m_view.verticalScrollBar()->setValue(header->sectionPosition(row)
                                         - header->sectionPosition(first));
}

} // namespace grid
