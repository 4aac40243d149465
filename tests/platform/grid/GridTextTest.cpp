#include "platform/grid/GridText.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

#include "platform/grid/FlexGrid.h"
#include "support/PrintQString.h"

using grid::FlexGrid;
using namespace Qt::StringLiterals;

namespace {

TEST(GridText, ShowsBreaksAndTabsWithinACellAsSigns)
{
    FlexGrid grid;
    grid.setTextMatrix(0, 1, u"语文\r\n参试"_s);
    grid.setTextMatrix(1, 1, u"1\n2\t3"_s);
    EXPECT_EQ(gridText(grid), u"\t语文⏎参试\n\t1⏎2 3\n"_s);
}

TEST(GridText, AsJsonHoldsSizeMergingTextsAndWidths)
{
    FlexGrid grid;
    grid.FixedRows = 0;
    grid.setRows(3);
    grid.setMergeRow(2, true);
    grid.setMergeRow(0, true);
    grid.setMergeCol(1, true);
    grid.setColWidth(-1, 750);
    grid.setColWidth(0, 1100);
    grid.setTextMatrix(0, 0, u"班级"_s);
    grid.setTextMatrix(2, 1, u"90.5"_s);
    EXPECT_EQ(QJsonDocument(gridJson(grid)).toJson(QJsonDocument::Compact).toStdString(),
              "{\"ColWidth\":{\"-1\":750,\"0\":1100},\"Cols\":2,\"FixedRows\":0,\"MergeCol\":[1],"
              "\"MergeRow\":[0,2],\"Rows\":3,"
              "\"TextMatrix\":[[\"班级\",\"\"],[\"\",\"\"],[\"\",\"90.5\"]]}");
}

TEST(GridText, AsJsonOfAnEmptyGridHoldsEmptyLists)
{
    FlexGrid grid;
    grid.setRows(0);
    grid.setCols(0);
    EXPECT_EQ(QJsonDocument(gridJson(grid)).toJson(QJsonDocument::Compact).toStdString(),
              "{\"ColWidth\":{},\"Cols\":0,\"FixedRows\":1,\"MergeCol\":[],\"MergeRow\":[],"
              "\"Rows\":0,\"TextMatrix\":[]}");
}

} // namespace
