#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"
#include "workbooks/writers/SampleBook.h"
#include "workbooks/writers/WriterText.h"
#include "workbooks/writers/XlsxWriter.h"

using namespace Qt::StringLiterals;
using excel::Worksheet;

namespace {

class XlsxDrawings : public testing::Test
{
protected:
    QByteArray written(const QByteArray& part) const
    {
        const QString path = folder.write(u"a.xlsx"_s, {});
        excel::writeXlsx(book, path);
        return partOf(path, part);
    }
    excel::Chart& addChart(const chart::LineChart& design)
    {
        excel::Chart& chart = sheet.addChart(sheet.Range(4, 1, 20, 12).place());
        chart.setSource({{1, 1, 2, 1}, {1, 2, 2, 2}});
        chart.setDesign(design);
        return chart;
    }
    QByteArray chartPart() const { return written("xl/charts/chart1.xml"); }
    QByteArray drawingPart() const { return written("xl/drawings/drawing1.xml"); }

    const BookFolder folder;
    excel::Workbook book;
    Worksheet& sheet = book.addSheet(u"成绩"_s);
};

chart::LineChart titled(const QString& title)
{
    chart::LineChart design;
    design.title = title;
    design.axis.title = title;
    return design;
}

} // namespace

TEST_F(XlsxDrawings, AMaximumThatIsNotAboveTheMinimumIsLeftToTheReader)
{
    const struct
    {
        std::optional<double> minimum;
        std::optional<double> maximum;
        bool isWritten;
    } cases[] = {{1, 2, true},   {1, 1, false},           {1, 0, false},
                 {1, -5, false}, {std::nullopt, 0, true}, {1, std::nullopt, false}};
    for (const auto& [minimum, maximum, isWritten] : cases) {
        chart::LineChart design;
        design.axis.minimum = minimum;
        design.axis.maximum = maximum;
        addChart(design);
        const QByteArray part = written(
            "xl/charts/chart" + QByteArray::number(qsizetype(sheet.drawings().size())) + ".xml");
        EXPECT_EQ(part.contains("<c:max val="), isWritten) << maximum.value_or(0);
        EXPECT_EQ(part.contains("<c:min val=\"1\"/>"), minimum.has_value());
    }
}

TEST_F(XlsxDrawings, TitlesAreTextsWhateverTheyHold)
{
    const std::pair<QString, QByteArray> titles[] = {
        {u"=1+1"_s, "<a:t>=1+1</a:t>"},
        {u"<张&三>\""_s, "<a:t>&lt;张&amp;三&gt;\"</a:t>"},
        {u"两\n行\x01'--"_s, "<a:t>两 行 '--</a:t>"},
        {u"云"_s.repeated(10000), "<a:t>" + u"云"_s.repeated(10000).toUtf8() + "</a:t>"}};
    int number = 0;
    for (const auto& [title, text] : titles) {
        addChart(titled(title));
        const QByteArray part = written("xl/charts/chart" + QByteArray::number(++number) + ".xml");
        EXPECT_EQ(part.count(text), 2) << text.left(60).constData();
        sheet.addLabel(QRectF(0, 0, 20, 12)).setText(title);
        EXPECT_TRUE(
            drawingPart().contains(QString::fromUtf8(text).replace(u'"', u"&quot;"_s).toUtf8()))
            << text.left(60).constData();
    }
}

TEST_F(XlsxDrawings, ATextOfADrawingHoldsNothingThatXmlCannot)
{
    EXPECT_EQ(excel::drawnText(u"a\tb\r\nc"_s), u"a b  c"_s);
    sheet.addLabel({}).setText(QString(QChar(0xD800)) + u"x"_s);
    EXPECT_TRUE(drawingPart().contains("<a:t>?x</a:t>"));
    EXPECT_EQ(excel::drawnText(QString(QChar(0xFFFF)) + u"_x0041_"_s), u" _x0041_"_s);
}

TEST_F(XlsxDrawings, ReferencesQuoteTheNameOfTheSheet)
{
    addChart({});
    const std::pair<QString, QByteArray> names[] = {{u"A1"_s, "'A1'!$A$1:$A$2"},
                                                    {u"2023"_s, "'2023'!$A$1:$A$2"},
                                                    {u"张's 班"_s, "'张''s 班'!$A$1:$A$2"}};
    for (const auto& [name, reference] : names) {
        sheet.setName(name);
        EXPECT_TRUE(chartPart().contains(QByteArray("<c:f>" + reference + "</c:f>")))
            << reference.constData();
    }
}

TEST_F(XlsxDrawings, AChartOfOneExamHasOnePoint)
{
    sheet.setCell(1, 1, u"期中"_s);
    sheet.setCell(1, 2, 38);
    addChart({}).setSource({{1, 1, 1, 1}, {1, 2, 1, 2}});
    const QByteArray part = chartPart();
    EXPECT_TRUE(part.contains("<c:f>'成绩'!$B$1</c:f>"));
    EXPECT_TRUE(part.contains("<c:ptCount val=\"1\"/><c:pt idx=\"0\"><c:v>38</c:v></c:pt>"));
}

TEST_F(XlsxDrawings, AChartOverCellsThatNoSheetHasIsWrittenWithoutData)
{
    addChart({}).setSource({{1, 0, 2, 0}, {1, 2, 2, 2}});
    EXPECT_FALSE(chartPart().contains("<c:ser>"));
    EXPECT_TRUE(chartPart().contains("<c:lineChart>"));
}

TEST_F(XlsxDrawings, AChartWithoutRoomForItsPlotLeavesItsPlaceToTheReader)
{
    excel::Chart& chart = addChart({});
    EXPECT_TRUE(chartPart().contains("<c:plotArea><c:layout><c:manualLayout>"));
    for (const double height : {27.0, 0.0}) {
        chart.setHeight(height);
        EXPECT_TRUE(chartPart().contains("<c:plotArea><c:layout/>")) << height;
    }
}

TEST_F(XlsxDrawings, LabelsOfPointsAndMarkersAreWrittenAsAsked)
{
    chart::LineChart design;
    design.hasMarkers = false;
    addChart(design);
    EXPECT_FALSE(chartPart().contains("<c:dLbls>"));
    EXPECT_TRUE(chartPart().contains("<c:symbol val=\"none\"/>"));
}

TEST_F(XlsxDrawings, AChartLooksInAFileAsInTheWindow)
{
    chart::LineChart design;
    design.hasDataLabels = true;
    addChart(design);
    const QByteArray part = chartPart();
    const auto line = [](const QByteArray& before, const QByteArray& color) -> QByteArray {
        return before + "<c:spPr><a:ln w=\"9525\"><a:solidFill><a:srgbClr val=\"" + color + "\"/>";
    };
    EXPECT_TRUE(part.contains(line("<c:majorGridlines>", "C0C0C0")));
    EXPECT_TRUE(part.contains(line("</c:chart>", "000000")));
    EXPECT_TRUE(part.contains("<c:spPr><a:solidFill><a:srgbClr val=\"FFFFFF\"/></a:solidFill>"
                              "<a:ln w=\"9525\"><a:solidFill><a:srgbClr val=\"808080\"/>"));
    EXPECT_TRUE(part.contains("<c:symbol val=\"diamond\"/><c:spPr><a:solidFill>"
                              "<a:srgbClr val=\"000080\"/>"));
    // Names and numbers stand upright, in 10 points; so do the labels.
    EXPECT_EQ(part.count("<a:bodyPr rot=\"0\" vert=\"horz\"/><a:lstStyle/><a:p><a:pPr>"
                         "<a:defRPr sz=\"1000\""),
              3);
}

TEST_F(XlsxDrawings, AFrameEndsAtItsCellsAfterTheirSizesChanged)
{
    sheet.setColumnWidth(1, 35, 4.3);
    sheet.setRowHeight(5, 17.1);
    addChart({});
    EXPECT_TRUE(drawingPart().contains("<xdr:to><xdr:col>12</xdr:col><xdr:colOff>0</xdr:colOff>"
                                       "<xdr:row>20</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:to>"));
}

TEST_F(XlsxDrawings, WhatReachesOutOfTheSheetIsHeldAtItsEdge)
{
    sheet.addLine(QPointF(-10, -5), QPointF(30, 0));
    EXPECT_TRUE(
        drawingPart().contains("<xdr:from><xdr:col>0</xdr:col><xdr:colOff>0</xdr:colOff>"
                               "<xdr:row>0</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:from>"));
}

TEST_F(XlsxDrawings, EqualPicturesAreInTheFileOnce)
{
    const QString png = folder.write(u"a.png"_s, samplePng());
    sheet.insertPicture(png);
    book.addSheet(u"另一个"_s).insertPicture(png);
    EXPECT_EQ(written("xl/media/image1.png"), samplePng());
    EXPECT_THROW(written("xl/media/image2.png"), excel::ReadFailure);
    EXPECT_TRUE(written("xl/drawings/_rels/drawing2.xml.rels").contains("../media/image1.png"));
}

TEST_F(XlsxDrawings, EachSheetRefersToItsOwnDrawings)
{
    book.addSheet(u"空"_s);
    book.addSheet(u"线"_s).addLine(QPointF(), QPointF(9, 9));
    EXPECT_FALSE(written("xl/worksheets/sheet2.xml").contains("<drawing"));
    EXPECT_TRUE(
        written("xl/worksheets/sheet3.xml").endsWith("<drawing r:id=\"rId1\"/></worksheet>"));
    EXPECT_TRUE(
        written("xl/worksheets/_rels/sheet3.xml.rels").contains("../drawings/drawing1.xml"));
}
