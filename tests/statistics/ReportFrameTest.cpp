#include "statistics/ReportFrame.h"

#include "ReportFixture.h"
#include "workbooks/model/Application.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::TJKSRS;
using statistics::Transfer;

using ReportFrameTest = ReportTest;

TEST_F(ReportFrameTest, AReportForTheGridLeavesTheSheetsOfAnEarlierAnalysis)
{
    excel::Application application;
    excel::Worksheet& sheet = application.Workbooks().Add().Worksheets().Item(1);
    statistics::StreamSlot& slot = context.streamSlots[0];
    slot.ReportSheet = &sheet;
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(sheet.Cells(1, 1), runtime::Value());
    EXPECT_EQ(slot.SheetRow, 1);
    TJKSRS(context, exams, grid, Transfer::ToSheet);
    EXPECT_EQ(sheet.Cells(1, 1).text(), u"考试人数"_s);
    EXPECT_GT(slot.SheetRow, grid.Rows());
}

} // namespace
