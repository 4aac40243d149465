#pragma once

#include <QSet>

#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Trap.h"
#include "statistics/ReportContext.h"

namespace statistics {

/// Whether a report's blocks are also copied to the sheets of the comprehensive analysis.
enum class Transfer { GridOnly, ToSheet };

/// Of the columns that name a row, those in which equal neighbours are merged.
enum class MergedNames { Classes, ClassesAndSecond };

/// Heading of the column that tells the exam.
extern const QString ExamHeading;

/// What a block looks like.
struct BlockShape
{
    QString title;
    /// Heading rows below the title row.
    int headingRows = 1;
    /// Rows of each class: its exams, or its rank bands.
    int rowsPerClass = 1;
    /// First data column: 2 where column 1 tells the exam or the band, else 1.
    int firstColumn = 1;
    int columnsPerItem = 1;
    int items = 0;
};

/// One block of a report: a title row, heading rows, and the rows of each class of a stream. It
/// begins behind the grid's last row. Classes, rows of a class, items and their columns count from
/// 0.
class Block
{
public:
    /// Adds the block's rows and the columns that are missing, and writes the title.
    Block(grid::FlexGrid& grid, const std::vector<library::ClassEntry>& classes, BlockShape shape);

    /// The block's empty figures, as its shape has room for them.
    BlockFigures emptyFigures() const;
    /// What note() notes from now on goes there.
    void noteIn(BlockFigures& figures) { m_figures = &figures; }

    int titleRow() const { return m_titleRow; }
    int lastRow() const { return m_lastRow; }
    int row(int classIndex, int line) const
    {
        return m_titleRow + m_shape.headingRows + 1 + classIndex * m_shape.rowsPerClass + line;
    }
    int column(int item, int part) const
    {
        return m_shape.firstColumn + item * m_shape.columnsPerItem + part;
    }

    int columnsPerItem() const { return m_shape.columnsPerItem; }

    // Heading rows count from 1; 0 is the title row.

    /// "班级" into column 0.
    void headClass(int headingRow);
    /// The heading of column 1, where that is no data column.
    void headSecond(int headingRow, const QString& text = ExamHeading);
    /// Both.
    void headNames(int headingRow, const QString& second = ExamHeading);
    /// `text` into one column of an item.
    void head(int headingRow, int item, int part, const QString& text);
    /// Equal neighbours of a heading row are merged.
    void mergeHeading(int headingRow);
    /// Two heading rows: each item's name over its columns, and below it what each column tells.
    void headItems(const QStringList& items, const QStringList& parts,
                   const QString& second = ExamHeading);

    /// Calls `fill(index, class number)` for each class after naming the rows of that line: the
    /// class, and `second` behind it where column 1 is no data column.
    template <class Fill> void eachClass(int line, const QString& second, Fill fill)
    {
        nameRows(line, second);
        for (int j = 0; j < int(m_classes.size()); ++j)
            fill(j, m_classes[size_t(j)].number);
    }
    /// Students of a class today, whatever their category.
    int students(int classIndex) const { return m_classes[size_t(classIndex)].students; }
    void set(int classIndex, int line, int item, int part, const QString& text);
    QString text(int classIndex, int line, int item, int part) const;
    /// Says what the cells of a line and column stand for in all classes.
    void note(int line, int item, int part, Meaning meaning);

    /// Ranks the classes by the figures of one column, as they stand in the grid, into another
    /// column of the item.
    void rankClasses(int line, int item, int valuePart, int rankPart);

private:
    void nameRows(int line, const QString& second);
    void noteRank(int line, int item, int valuePart, int rankPart);

    grid::FlexGrid& m_grid;
    const std::vector<library::ClassEntry>& m_classes;
    BlockShape m_shape;
    int m_titleRow;
    int m_lastRow;
    QSet<int> m_namedLines;
    BlockFigures* m_figures = nullptr;
};

/// Widths of a report's columns, in twips.
struct ColumnWidths
{
    int all = 0;
    /// Of the column of the classes; 0 leaves it as all.
    int classes = 0;
    /// Of the column behind it, where that tells the exam; 0 leaves it as all.
    int exams = 0;
};

/// What all reports share: an emptied grid, one or more blocks for each stream, and the copy of
/// each block to the stream's sheet.
class ReportFrame
{
public:
    /// `trap` is the report's, and outlives the frame.
    ReportFrame(ReportContext& context, grid::FlexGrid& grid, const QString& exams,
                Transfer transfer, const runtime::Trap& trap);

    const QStringList& exams() const { return m_exams; }
    int examCount() const { return int(m_exams.size()); }
    /// 2 for several exams, whose names then stand in column 1; else 1.
    int firstColumn() const { return m_exams.size() > 1 ? 2 : 1; }

    /// The streams of the library; each has a block.
    int streamCount() const;
    const QString& stream(int index) const;
    const std::vector<library::ClassEntry>& classes(int stream) const;

    /// Empties the grid.
    void clear(int cols = 0);
    /// The heading rows stay in view where the library has one stream; stacked blocks cannot keep
    /// one.
    void fixHeading(int rows);
    /// Equal neighbours are merged in column 0, and in column 1 if that is asked for.
    void mergeNames(MergedNames merged);
    /// A block of the stream's classes. It notes its figures where it stays in the grid.
    Block block(int stream, BlockShape shape);
    /// A block with a row for each class and exam, and the subjects across. Column 1 is merged only
    /// where it names the exams. Rows of a class and first column are the frame's.
    Block examBlock(int stream, BlockShape shape,
                    MergedNames merged = MergedNames::ClassesAndSecond);
    /// The title with the stream in front where the library has two.
    QString streamTitle(int stream, const QString& joiner, const QString& title) const;
    /// Copies a finished block if that was asked for; `gap` more rows than one stay empty behind
    /// it.
    void finish(int stream, const Block& block, int gap = 0);
    /// Sets the widths and centres all cells. A column that is not there is shown.
    void setWidths(const ColumnWidths& widths);
    /// ColumnWidths::exams of most reports: that of the column of exams, where there is one.
    int examsWidth() const { return firstColumn() == 2 ? 900 : 0; }

private:
    ReportContext& m_context;
    grid::FlexGrid& m_grid;
    QStringList m_exams;
    Transfer m_transfer;
    const runtime::Trap& m_trap;
};

/// For a report on one exam: the last of the list becomes the list. Several are asked about first;
/// false if the user gave it up.
bool useLastExam(QString& exams);

} // namespace statistics
