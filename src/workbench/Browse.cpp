#include "workbench/Browse.h"

#include <optional>

#include "library/ColumnNames.h"
#include "platform/database/Recordset.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"
#include "workbench/Prompts.h"

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
    if (item == u"姓名" || item == u"考试名称")
        units = 4;
    else if (library::isTotal(heading))
        units = 3;
    return int(runtime::Round(unit * units));
}

void writeHeadings(FlexGrid& grid, const QStringList& items)
{
    const double unit = characterUnit(grid);
    for (int col = 0; col < items.size(); ++col) {
        const QString heading = browseHeading(items[col]);
        fillTrap([&] { grid.setTextMatrix(0, col, heading); });
        fillTrap([&] { grid.setColWidth(col, columnWidth(items[col], heading, unit)); });
    }
}

/// The field of each item, looked up once; none where the statement does not return it.
std::vector<std::optional<database::Field>> fieldsOf(database::Recordset& rows,
                                                     const QStringList& items)
{
    std::vector<std::optional<database::Field>> fields(size_t(items.size()));
    for (int k = 0; k < items.size(); ++k)
        Trap::silent()([&] { fields[size_t(k)] = rows.Fields(items[k]); });
    return fields;
}

void writeRows(FlexGrid& grid, const QStringList& items, database::Recordset& rows)
{
    qint64 count = 0;
    fillTrap([&] { count = rows.RecordCount(); });
    if (count == 0)
        return;
    const std::vector<std::optional<database::Field>> fields = fieldsOf(rows, items);
    for (int row = 1; row <= int(count); ++row) {
        for (int col = 0; col < items.size(); ++col) {
            fillTrap([&] {
                const std::optional<database::Field>& known = fields[size_t(col)];
                const database::Field field = known ? *known : rows.Fields(items[col]);
                grid.setTextMatrix(row, col, field.Value().text());
            });
        }
        fillTrap([&] { rows.MoveNext(); });
    }
}

} // namespace

QString browseHeading(const QString& item)
{
    // The first character alone keeps the column narrow, even where two subjects begin alike.
    return library::isGradeRankColumn(item) ? item.left(1) + u"名"_s : item;
}

QStringList Browse::defaultItems() const
{
    QStringList items{u"班级"_s, u"学号"_s, u"姓名"_s, u"考试名称"_s};
    const QString family = m_selection.ListXM.text();
    for (const QString& column : m_selection.library().catalogue.AllColumns) {
        const bool total = library::isTotal(column);
        if (family == u"原始分和名次") {
            items << column << library::gradeRankColumn(column);
            if (total)
                items << library::classRankColumn(column);
        } else if (family == u"Z分") {
            items << library::zScoreColumn(column);
        } else if (family == u"T分") {
            items << library::tScoreColumn(column);
            if (total)
                items << library::tRankColumn(column);
        }
    }
    return items;
}

void Browse::MKzdyxs()
{
    const Trap trap{" - Sub MKzdyxs/FormKaoShi"};
    library::Settings& settings = m_selection.library().settings;
    trap([&] {
        settings.DisplayItems =
            settings.GetZDYXS(m_selection.ListXM.text() + m_selection.streamWord());
    });
    if (settings.DisplayItems.isEmpty())
        settings.DisplayItems = defaultItems();
}

void Browse::ShowKSCJmain(const QString& sql, FlexGrid& grid)
{
    library::ScoreLibrary& library = m_selection.library();
    const QStringList& items = library.settings.DisplayItems;
    database::Recordset rows;
    fillTrap([&] { rows.Open(sql, library.Conn, database::Trust::User); });
    grid.Redraw = false;
    fillTrap([&] { grid.setCols(int(items.size())); });
    fillTrap([&] { grid.setRows(int(rows.RecordCount()) + 1); });
    writeHeadings(grid, items);
    writeRows(grid, items, rows);
    grid.Redraw = true;
}

bool Browse::CommandLLCJ_Click(FlexGrid& grid)
{
    const Trap trap{" - Private Sub Command19_Click/FormKaoShi"};
    if (m_selection.ListKSMC.selectedCount() == 0) {
        runtime::MsgBox(NoExamMessage, {}, runtime::Buttons::Ok, runtime::Icon::Warning);
        return false;
    }
    trap([&] { MKzdyxs(); });
    trap([&] { ShowKSCJmain(m_selection.Text1, grid); });
    grid.Visible = true;
    return true;
}

} // namespace workbench
