#pragma once

#include "workbooks/model/Worksheet.h"

namespace exporting {

/// What the chart below a student's rows shows, and where. Rows and columns count from 1.
struct RankChart
{
    int firstRow = 1; ///< of his exams
    int lastRow = 1;  ///< above firstRow where he has none
    int chartTop = 1;
    /// 0 or less makes a frame that ends above its top; the corners are put in order.
    int chartRows = 1;
    int chartColumns = 12;
    QString title;
    double averageRank = 0;
    /// Students of the grade: the lower end of the axis of ranks.
    qint64 studentCount = 0;
    int rankColumn = 0;  ///< 总分年名; 0 if the list of columns has none
    int labelColumn = 0; ///< 考试名称, likewise
};

/// Whether the inside of a chart's plot has any height; without, its line lies somewhere else.
enum class PlotRoom { None, Enough };

/// Draws a student's ranks across his exams on the sheet, rank 1 at the top, with a dashed line and
/// a label at their average. A step that fails is shown, and the next one is done; without one of
/// the columns, and without a row, the chart has no data.
PlotRoom HuiTu(excel::Worksheet& sheet, const RankChart& asked);

} // namespace exporting
