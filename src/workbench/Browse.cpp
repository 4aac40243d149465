#include "workbench/Browse.h"

#include <functional>

#include "library/ColumnNames.h"
#include "platform/database/Recordset.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"
#include "workbench/TypedStatement.h"

namespace workbench {

using namespace Qt::StringLiterals;
using grid::FlexGrid;
using runtime::Trap;

namespace {

const Trap fillTrap{" - Sub ShowKSCJmain/FormKaoShi"};

/// The width of one Chinese character in the grid's font, with some air, in twips.
double characterUnit(const FlexGrid& grid)
{
    constexpr double twipsPerPoint = 20;
    return grid.FontSize * twipsPerPoint * 1.2;
}

int columnWidth(const QString& item, const QString& heading, double unit)
{
    double units = 2;
    if (item == u"姓名"_s || item == u"考试名称"_s)
        units = 4;
    else if (library::isTotal(heading))
        units = 3;
    return int(runtime::Round(unit * units));
}

/// What a report may have set beside merges and fixed rows, which stay.
void resetLooks(FlexGrid& grid)
{
    constexpr int allLines = -1;
    fillTrap([&] { grid.setRowHeight(allLines, FlexGrid::DefaultRowHeight); });
    fillTrap([&] { grid.setColAlignment(allLines, FlexGrid::DefaultColAlignment); });
    grid.WordWrap = false;
    for (int row = 0; row < grid.Rows(); ++row)
        grid.setRowData(row, 0);
}

void writeRows(FlexGrid& grid, const QStringList& items, database::Recordset& rows)
{
    qint64 count = 0;
    fillTrap([&] { count = rows.RecordCount(); });
    if (count == 0)
        return;
    std::vector<database::FieldByName> fields;
    for (const QString& item : items)
        fields.emplace_back(rows, item);
    for (int row = 1; row <= int(count); ++row) {
        for (int col = 0; col < items.size(); ++col) {
            fillTrap(
                [&] { grid.setTextMatrix(row, col, fields[size_t(col)].in(rows).Value().text()); });
        }
        fillTrap([&] { rows.MoveNext(); });
    }
}

} // namespace

void writeHeadings(FlexGrid& grid, const QStringList& items)
{
    const double unit = characterUnit(grid);
    for (int col = 0; col < items.size(); ++col) {
        const QString heading = browseHeading(items[col]);
        fillTrap([&] { grid.setTextMatrix(0, col, heading); });
        fillTrap([&] { grid.setColWidth(col, columnWidth(items[col], heading, unit)); });
    }
}

QString browseHeading(const QString& item)
{
    // The first character alone keeps the column narrow, even where two subjects begin alike.
    return library::isGradeRankColumn(item) ? item.left(1) + u"名"_s : item;
}

namespace {

QStringList defaultItems(const library::Catalogue& catalogue, const QString& family)
{
    QStringList items{u"班级"_s, u"学号"_s, u"姓名"_s, u"考试名称"_s};
    for (const QString& column : catalogue.AllColumns) {
        const bool total = library::isTotal(column);
        if (family == library::ScoreFamily) {
            items << column << library::gradeRankColumn(column);
            if (total)
                items << library::classRankColumn(column);
        } else if (family == library::ZScoreFamily) {
            items << library::zScoreColumn(column);
        } else if (family == library::TScoreFamily) {
            items << library::tScoreColumn(column);
            if (total)
                items << library::tRankColumn(column);
        }
    }
    return items;
}

} // namespace

QStringList shownColumns(library::ScoreLibrary& scoreLibrary, const QString& family,
                         const QString& stream)
{
    const QStringList stored = scoreLibrary.settings.GetZDYXS(family + stream);
    return stored.isEmpty() ? defaultItems(scoreLibrary.catalogue, family) : stored;
}

QStringList MKzdyxs(library::ScoreLibrary& scoreLibrary, const QString& family,
                    const QString& stream)
{
    const Trap trap{" - Sub MKzdyxs/FormKaoShi"};
    QStringList& items = scoreLibrary.settings.DisplayItems;
    trap([&] { items = shownColumns(scoreLibrary, family, stream); });
    return items;
}

namespace {

/// Fills the grid with the rows that `open` opens; not if it gives false.
bool showRows(const std::function<bool(database::Recordset&)>& open, const QStringList& items,
              FlexGrid& grid)
{
    database::Recordset rows;
    bool wanted = true;
    fillTrap([&] { wanted = open(rows); });
    if (!wanted)
        return false;
    grid.Redraw = false;
    resetLooks(grid);
    fillTrap([&] { grid.setCols(int(items.size())); });
    fillTrap([&] { grid.setRows(int(rows.RecordCount()) + 1); });
    writeHeadings(grid, items);
    writeRows(grid, items, rows);
    grid.Redraw = true;
    return true;
}

bool showChosenRows(library::ScoreLibrary& scoreLibrary, const RowChoice& choice,
                    const QStringList& items, FlexGrid& grid)
{
    const BoundSql bound = boundRowsSql(choice);
    return showRows(
        [&](database::Recordset& rows) {
            rows.Open(bound.sql, bound.values, scoreLibrary.Conn, database::Trust::User);
            return true;
        },
        items, grid);
}

} // namespace

bool ShowKSCJmain(library::ScoreLibrary& scoreLibrary, const QString& sql, const QStringList& items,
                  FlexGrid& grid, runtime::Progress& progress)
{
    return showRows(
        [&](database::Recordset& rows) {
            const bool wanted = mayRun(scoreLibrary, sql, progress);
            if (wanted)
                rows.Open(sql, scoreLibrary.Conn, database::Trust::User);
            return wanted;
        },
        items, grid);
}

bool checkExamChosen(const QStringList& exams)
{
    if (exams.isEmpty())
        runtime::warn(u"没有选择考试，请选择考试继续。"_s);
    return !exams.isEmpty();
}

bool browse(library::ScoreLibrary& scoreLibrary, const BrowseRequest& request, FlexGrid& grid,
            runtime::Progress& progress)
{
    const Trap trap{" - Private Sub Command19_Click/FormKaoShi"};
    if (!checkExamChosen(request.rows.exams))
        return false;
    QStringList items;
    trap([&] { items = MKzdyxs(scoreLibrary, request.family, request.stream); });
    bool shown = true;
    trap([&] {
        shown = request.sql == rowsSql(request.rows)
                    ? showChosenRows(scoreLibrary, request.rows, items, grid)
                    : ShowKSCJmain(scoreLibrary, request.sql, items, grid, progress);
    });
    grid.Visible = grid.Visible || shown;
    return shown;
}

} // namespace workbench
