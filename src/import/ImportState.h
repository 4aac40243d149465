#pragma once

#include <vector>

#include <QString>

#include "platform/grid/FlexGrid.h"

namespace importing {

/// A subject found on the sheet.
struct ImportSubject
{
    /// Also the column's name in 考试名称表 and 成绩表.
    QString KMName;
    /// Full mark; 0 until it was entered.
    float KMFull = 0;
    /// Column of the sheet, counted from 1.
    short KMColumn = 0;
};

/// What the exam import shares with whoever answers its questions; it stays after the import, so
/// that the list of errors can be shown again.
struct ImportState
{
    QString ExamName;
    /// Number of bad scores of the latest import.
    float ErrorCount = 0;
    /// Subjects in sheet order.
    std::vector<ImportSubject> KMImport;
    /// Staging grid: row k holds sheet row k + 1; columns 0 to 2 class, number, name, from column 3
    /// on the scores' texts in the order of KMImport.
    grid::FlexGrid MFGData;
    /// A place in the staging grid.
    struct Cell
    {
        int row = 0;
        int column = 0;
    };
    /// Where the bad scores stand, in the order of the rows of `errors`.
    std::vector<Cell> badCells;
    /// ID of the student of each row of the staging grid; 0 for one whom the library does not know.
    std::vector<qint64> studentIds;
    /// Class, number, name, subject, bad value, reason (emptied once answered), and a column of no
    /// width; row 0 holds the headings.
    grid::FlexGrid errors;
};

} // namespace importing
