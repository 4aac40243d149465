#include "configuration/CustomDisplay.h"

#include "library/ColumnNames.h"
#include "platform/database/Recordset.h"
#include "platform/database/WriteBatch.h"
#include "platform/grid/MoveRows.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"

namespace configuration {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

constexpr int NameCol = 0;

const QString tick = u"√"_s;

} // namespace

CustomDisplay::CustomDisplay(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary)
{
    // The names are cells like others, so that dragging over them selects rows without ticking.
    columns.FixedCols = 0;
    columns.Col = columns.ColSel = NameCol;
    columns.setCols(2);
    columns.setTextMatrix(0, NameCol, u"项目名称"_s);
    columns.setTextMatrix(0, TickCol, u"显示"_s);
}

QStringList CustomDisplay::streamChoices() const
{
    return QStringList{library::AllStreams} + m_library.catalogue.Streams;
}

void CustomDisplay::load()
{
    const Trap trap{" - Sub init/FormZDYXS"};
    const QStringList& shown = m_library.settings.DisplayItems;
    database::Recordset scores;
    trap([&] { scores.Open(u"select * from 成绩表"_s, m_library.Conn); });
    int n = 0;
    trap([&] { n = scores.fieldCount(); });
    trap([&] { columns.setRows(n - (library::fieldsNotOffered - 1)); });
    for (int c = library::fieldsNotOffered; c < n; ++c) {
        const int row = c - (library::fieldsNotOffered - 1);
        trap([&] {
            const QString name = scores.Fields(c).Name();
            columns.setTextMatrix(row, NameCol, name);
            columns.setTextMatrix(row, TickCol, shown.contains(name) ? tick : QString());
        });
    }
}

void CustomDisplay::flip(int row)
{
    const Trap trap{" - Private Sub MSFlexGrid1_MouseUp/FormZDYXS"};
    if (row < columns.FixedRows)
        return;
    trap([&] {
        const bool ticked = columns.TextMatrix(row, TickCol) == tick;
        columns.setTextMatrix(row, TickCol, ticked ? QString() : tick);
    });
}

RowBlock CustomDisplay::moveUp(RowBlock block)
{
    grid::MoveMFGData(columns, block.first, block.last, 1);
    return block;
}

RowBlock CustomDisplay::moveDown(RowBlock block)
{
    grid::MoveMFGData(columns, block.first, block.last, -1);
    return block;
}

QString CustomDisplay::tickedColumns() const
{
    QStringList ticked;
    for (int row = 1; row < columns.Rows(); ++row) {
        if (columns.TextMatrix(row, TickCol) == tick)
            ticked.append(columns.TextMatrix(row, NameCol));
    }
    return ticked.join(u',');
}

void CustomDisplay::save(const QString& key)
{
    const Trap trap{" - Private Sub Command1_Click/FormZDYXS"};
    const QString ticked = tickedColumns();
    trap([&] {
        database::WriteBatch batch(m_library.Conn);
        database::Recordset rows;
        rows.Open(u"select * from 自定义显示表 where 项目名称=?"_s, {key}, m_library.Conn);
        if (rows.RecordCount() == 0)
            rows.AddNew();
        trap([&] { rows.Fields(u"项目名称"_s).setValue(key); });
        trap([&] { rows.Fields(u"显示项目"_s).setValue(ticked); });
        rows.Update();
        batch.commit();
    });
    runtime::MsgBox(u"成功保存 自定义显示项目 "_s + key);
}

} // namespace configuration
