#include "statistics/ReportFrame.h"

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "scoring/Ranks.h"
#include "workbooks/model/GridToSheet.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

constexpr int RestrictedMerging = 2;
constexpr int Centred = 4;
const QString ClassHeading = u"班级"_s;

} // namespace

const QString ExamHeading = u"考试名称"_s;

Block::Block(grid::FlexGrid& grid, const std::vector<library::ClassEntry>& classes,
             BlockShape shape)
    : m_grid(grid),
      m_classes(classes),
      m_shape(std::move(shape)),
      m_titleRow(grid.Rows()),
      m_lastRow(row(int(classes.size()), 0) - 1)
{
    m_grid.setRows(m_lastRow + 1);
    m_grid.setCols(std::max(m_grid.Cols(), column(m_shape.items, 0)));
    m_grid.MergeCells = RestrictedMerging;
    m_grid.setMergeRow(m_titleRow, true);
    for (int col = 0; col < m_grid.Cols(); ++col)
        m_grid.setTextMatrix(m_titleRow, col, m_shape.title);
}

void Block::headClass(int headingRow)
{
    m_grid.setTextMatrix(m_titleRow + headingRow, 0, ClassHeading);
}

void Block::headSecond(int headingRow, const QString& text)
{
    if (m_shape.firstColumn == 2)
        m_grid.setTextMatrix(m_titleRow + headingRow, 1, text);
}

void Block::headNames(int headingRow, const QString& second)
{
    headClass(headingRow);
    headSecond(headingRow, second);
}

void Block::head(int headingRow, int item, int part, const QString& text)
{
    m_grid.setTextMatrix(m_titleRow + headingRow, column(item, part), text);
}

void Block::mergeHeading(int headingRow)
{
    m_grid.setMergeRow(m_titleRow + headingRow, true);
}

void Block::headItems(const QStringList& items, const QStringList& parts, const QString& second)
{
    mergeHeading(1);
    headNames(1, second);
    headNames(2, second);
    for (int k = 0; k < items.size(); ++k) {
        for (int part = 0; part < parts.size(); ++part) {
            head(1, k, part, items[k]);
            head(2, k, part, parts[part]);
        }
    }
}

void Block::nameRows(int line, const QString& second)
{
    if (m_namedLines.contains(line))
        return;
    m_namedLines.insert(line);
    for (int j = 0; j < int(m_classes.size()); ++j) {
        const QString name = runtime::doubleText(m_classes[size_t(j)].number) + u"班"_s;
        m_grid.setTextMatrix(row(j, line), 0, name);
        if (m_shape.firstColumn == 2)
            m_grid.setTextMatrix(row(j, line), 1, second);
    }
}

void Block::set(int classIndex, int line, int item, int part, const QString& text)
{
    m_grid.setTextMatrix(row(classIndex, line), column(item, part), text);
}

QString Block::text(int classIndex, int line, int item, int part) const
{
    return m_grid.TextMatrix(row(classIndex, line), column(item, part));
}

BlockFigures Block::emptyFigures() const
{
    return {.classes = m_classes,
            .rowsPerClass = m_shape.rowsPerClass,
            .firstColumn = m_shape.firstColumn,
            .columnsPerItem = m_shape.columnsPerItem,
            .items = m_shape.items};
}

void Block::note(int line, int item, int part, Meaning meaning)
{
    if (Meaning* noted = m_figures ? m_figures->meaning(line, item, part) : nullptr)
        *noted = std::move(meaning);
}

void Block::noteRank(int line, int item, int valuePart, int rankPart)
{
    const Meaning* value = m_figures ? m_figures->meaning(line, item, valuePart) : nullptr;
    if (!value)
        return;
    Meaning rank = value->as(FigureKind::Rank);
    rank.rankedPart = valuePart;
    note(line, item, rankPart, std::move(rank));
}

void Block::rankClasses(int line, int item, int valuePart, int rankPart)
{
    const int classes = int(m_classes.size());
    QStringList figures;
    for (int j = 0; j < classes; ++j)
        figures.append(text(j, line, item, valuePart));
    // One entry more than classes: it is empty and counts as 0, so that it stands ahead of an
    // average below 0.
    figures.append(QString());
    scoring::MyPaiXU(figures);
    for (int j = 0; j < classes; ++j)
        set(j, line, item, rankPart, figures[j]);
    noteRank(line, item, valuePart, rankPart);
}

ReportFrame::ReportFrame(ReportContext& context, grid::FlexGrid& grid, const QString& exams,
                         Transfer transfer, const runtime::Trap& trap)
    : m_context(context),
      m_grid(grid),
      m_exams(library::examNames(exams)),
      m_transfer(transfer),
      m_trap(trap)
{
}

int ReportFrame::streamCount() const
{
    const library::Catalogue& catalogue = m_context.library.catalogue;
    return int(std::min(size_t(catalogue.Streams.size()), catalogue.ClassTable.size()));
}

const QString& ReportFrame::stream(int index) const
{
    return m_context.library.catalogue.Streams[index];
}

const std::vector<library::ClassEntry>& ReportFrame::classes(int stream) const
{
    return m_context.library.catalogue.ClassTable.at(size_t(stream));
}

void ReportFrame::clear(int cols)
{
    m_grid.setRows(0);
    m_grid.setCols(cols);
}

void ReportFrame::fixHeading(int rows)
{
    m_grid.FixedRows = streamCount() == 1 ? rows : 0;
}

void ReportFrame::mergeNames(MergedNames merged)
{
    m_grid.setMergeCol(0, true);
    if (merged == MergedNames::ClassesAndSecond)
        m_grid.setMergeCol(1, true);
}

Block ReportFrame::block(int stream, BlockShape shape)
{
    Block block(m_grid, classes(stream), std::move(shape));
    if (m_transfer == Transfer::ToSheet)
        return block;
    BlockFigures figures = block.emptyFigures();
    figures.stream = this->stream(stream);
    figures.filter = m_context.library.settings.CategoryFilter;
    block.noteIn(m_context.figures.add(std::move(figures), m_grid, block.row(0, 0)));
    return block;
}

Block ReportFrame::examBlock(int stream, BlockShape shape, MergedNames merged)
{
    shape.rowsPerClass = examCount();
    shape.firstColumn = firstColumn();
    Block block = this->block(stream, std::move(shape));
    mergeNames(firstColumn() == 2 ? merged : MergedNames::Classes);
    return block;
}

QString ReportFrame::streamTitle(int stream, const QString& joiner, const QString& title) const
{
    return streamCount() == 2 ? this->stream(stream) + joiner + title : title;
}

void ReportFrame::finish(int stream, const Block& block, int gap)
{
    if (m_transfer == Transfer::GridOnly)
        return;
    StreamSlot& slot = m_context.streamSlots[size_t(stream)];
    excel::GridBlockToSheet(m_grid, slot.ReportSheet, slot.SheetRow,
                            {.firstRow = block.titleRow(),
                             .lastRow = block.lastRow(),
                             .firstCol = 0,
                             .lastCol = m_grid.Cols() - 1});
    slot.SheetRow += gap;
}

void ReportFrame::setWidths(const ColumnWidths& widths)
{
    constexpr int allColumns = -1;
    m_grid.setColWidth(allColumns, widths.all);
    m_grid.setColAlignment(allColumns, Centred);
    // Without streams there are no columns.
    if (widths.classes > 0)
        m_trap([&] { m_grid.setColWidth(0, widths.classes); });
    if (widths.exams > 0)
        m_trap([&] { m_grid.setColWidth(1, widths.exams); });
}

bool useLastExam(QString& exams)
{
    const QStringList names = library::examNames(exams);
    if (names.size() < 2)
        return true;
    exams = names.last();
    return runtime::MsgBox(u"当前操作只针对一次考试，只对"_s + exams + u"  进行统计，是否继续？"_s,
                           u"分析参数错误！"_s, runtime::Buttons::OkCancel, runtime::Icon::Question)
           == runtime::Answer::Ok;
}

} // namespace statistics
