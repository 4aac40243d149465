#include "configuration/CustomDisplay.h"

#include <utility>

#include "platform/database/Recordset.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Trap.h"

namespace configuration {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

constexpr int NameCol = 0;
constexpr int TickCol = 1;
/// The first fields of 成绩表, which are never offered.
constexpr int FieldsPassedOver = 3;

const QString tick = u"√"_s;

} // namespace

void CustomDisplay::Form_Load()
{
    // The names are cells like others, so that dragging over them selects rows without ticking.
    MSFlexGrid1.FixedCols = 0;
    MSFlexGrid1.Col = MSFlexGrid1.ColSel = NameCol;
    MSFlexGrid1.setCols(2);
    MSFlexGrid1.setTextMatrix(0, NameCol, u"项目名称"_s);
    MSFlexGrid1.setTextMatrix(0, TickCol, u"显示"_s);
}

QStringList CustomDisplay::streamChoices() const
{
    return QStringList{u"全"_s} + m_library.catalogue.Streams;
}

QString CustomDisplay::caption() const
{
    return u"自定义显示"_s + u"  "_s + XMName;
}

void CustomDisplay::init()
{
    const Trap trap{" - Sub init/FormZDYXS"};
    const QStringList& shown = m_library.settings.DisplayItems;
    database::Recordset scores;
    trap([&] { scores.Open(u"select * from 成绩表"_s, m_library.Conn); });
    int n = 0;
    trap([&] { n = scores.fieldCount(); });
    trap([&] { MSFlexGrid1.setRows(n - (FieldsPassedOver - 1)); });
    for (int c = FieldsPassedOver; c < n; ++c) {
        const int row = c - (FieldsPassedOver - 1);
        trap([&] {
            const QString name = scores.Fields(c).Name();
            MSFlexGrid1.setTextMatrix(row, NameCol, name);
            MSFlexGrid1.setTextMatrix(row, TickCol, shown.contains(name) ? tick : QString());
        });
    }
}

void CustomDisplay::flip(int row)
{
    const bool ticked = MSFlexGrid1.TextMatrix(row, TickCol) == tick;
    MSFlexGrid1.setTextMatrix(row, TickCol, ticked ? QString() : tick);
}

void CustomDisplay::MSFlexGrid1_MouseUp(int MouseRow, int MouseCol)
{
    const Trap trap{" - Private Sub MSFlexGrid1_MouseUp/FormZDYXS"};
    // The heading is no tick that could be flipped.
    if (MouseCol == TickCol && MouseRow >= MSFlexGrid1.FixedRows)
        trap([&] { flip(MouseRow); });
    takeSelection();
}

void CustomDisplay::takeSelection()
{
    SelTop = MSFlexGrid1.Row;
    SelBottom = MSFlexGrid1.RowSel;
    if (SelTop > SelBottom)
        std::swap(SelTop, SelBottom);
}

void CustomDisplay::CommandUP_Click()
{
    grid::MoveMFGData(MSFlexGrid1, SelTop, SelBottom, 1);
}

void CustomDisplay::CommandDown_Click()
{
    grid::MoveMFGData(MSFlexGrid1, SelTop, SelBottom, -1);
}

QString CustomDisplay::tickedColumns() const
{
    QString columns;
    for (int row = 1; row < MSFlexGrid1.Rows(); ++row) {
        if (MSFlexGrid1.TextMatrix(row, TickCol) == tick)
            columns += MSFlexGrid1.TextMatrix(row, NameCol) + u","_s;
    }
    return columns.isEmpty() ? columns : runtime::DelLast(columns, 1);
}

void CustomDisplay::Command1_Click(const QString& stream)
{
    const Trap trap{" - Private Sub Command1_Click/FormZDYXS"};
    const QString columns = tickedColumns();
    const QString key = XMName + stream;
    database::Recordset rows;
    trap([&] {
        rows.Open(u"select * from 自定义显示表 where 项目名称='"_s + key + u"'"_s, m_library.Conn);
    });
    trap([&] {
        if (rows.RecordCount() == 0)
            rows.AddNew();
    });
    trap([&] { rows.Fields(u"项目名称"_s).setValue(key); });
    trap([&] { rows.Fields(u"显示项目"_s).setValue(columns); });
    trap([&] { rows.Update(); });
    rows.Close();
    runtime::MsgBox(u"成功保存 自定义显示项目 "_s + key);
}

} // namespace configuration
