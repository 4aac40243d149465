#include "workbooks/writers/XlsxAnchors.h"

#include <algorithm>
#include <cmath>

#include "workbooks/model/CellFormat.h"
#include "workbooks/writers/WriterText.h"

namespace excel {

namespace {

/// The unit of lengths in drawings.
constexpr double unitsPerPoint = 12700;

constexpr const char* head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<xdr:wsDr xmlns:xdr=\"http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing\" "
    "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\">";

std::string units(double points)
{
    return std::to_string(std::llround(points * unitsPerPoint));
}

std::string element(const char* name, const std::string& content)
{
    return std::string("<") + name + '>' + content + "</" + name + '>';
}

/// A corner by the cell that it lies in. On the edge of a cell it lies in the cell behind, so that
/// it stays on the edge however wide a program makes the cells.
std::string corner(const char* name, const QPointF& place, const SheetGeometry& geometry)
{
    constexpr double rounding = 0.5 / unitsPerPoint;
    const double x = std::max(0.0, place.x());
    const double y = std::max(0.0, place.y());
    const int column = geometry.columnAt(x + rounding);
    const int row = geometry.rowAt(y + rounding);
    return element(
        name, element("xdr:col", std::to_string(column - 1))
                  + element("xdr:colOff", units(std::max(0.0, x - geometry.columnLeft(column))))
                  + element("xdr:row", std::to_string(row - 1))
                  + element("xdr:rowOff", units(std::max(0.0, y - geometry.rowTop(row)))));
}

/// Where a shape lies, beside its anchor.
std::string transform(const QRectF& place, const char* flips)
{
    return std::string("<a:xfrm") + flips + "><a:off x=\"" + units(std::max(0.0, place.x()))
           + "\" y=\"" + units(std::max(0.0, place.y())) + "\"/><a:ext cx=\"" + units(place.width())
           + "\" cy=\"" + units(place.height()) + "\"/></a:xfrm>";
}

std::string shape(const char* form)
{
    return std::string("<a:prstGeom prst=\"") + form + "\"><a:avLst/></a:prstGeom>";
}

/// A line of the other diagonal goes from lower left to upper right.
const char* flipsOf(const QLineF& line)
{
    const bool right = line.x1() > line.x2();
    const bool below = line.y1() > line.y2();
    if (right)
        return below ? R"( flipH="1" flipV="1")" : R"( flipH="1")";
    return below ? R"( flipV="1")" : "";
}

std::string solidFill(int color)
{
    const QByteArray digits = QByteArray::number(color & 0xFFFFFF, 16).rightJustified(6, '0');
    return "<a:solidFill><a:srgbClr val=\"" + digits.toUpper().toStdString() + "\"/></a:solidFill>";
}

std::string font()
{
    const std::string name = QString::fromUtf16(CellFormat::defaultFontName).toUtf8().toStdString();
    const std::string size = std::to_string(std::lround(TextLabel::fontSize * 100));
    return R"(<a:rPr lang="zh-CN" sz=")" + size + "\">" + solidFill(0) + "<a:latin typeface=\""
           + name + "\"/><a:ea typeface=\"" + name + "\"/></a:rPr>";
}

} // namespace

void XlsxAnchors::begin(const QRectF& place, const char* behaviour)
{
    ++m_count;
    m_text += std::string("<xdr:twoCellAnchor editAs=\"") + behaviour + "\">";
    m_text += corner("xdr:from", place.topLeft(), m_geometry);
    m_text += corner("xdr:to", place.bottomRight(), m_geometry);
}

void XlsxAnchors::end()
{
    m_text += "<xdr:clientData/></xdr:twoCellAnchor>";
}

void XlsxAnchors::addProperties(const char* element, const char* name, const char* rest)
{
    const std::string number = std::to_string(m_count);
    m_text += std::string("<xdr:nv") + element + "Pr><xdr:cNvPr id=\"" + std::to_string(m_count + 1)
              + "\" name=\"" + name + ' ' + number + "\"/>" + rest + "</xdr:nv" + element + "Pr>";
}

void XlsxAnchors::add(const Picture& picture, const std::string& relation)
{
    begin(picture.place(), "oneCell");
    m_text += "<xdr:pic>";
    addProperties("Pic", "图片", "<xdr:cNvPicPr><a:picLocks noChangeAspect=\"1\"/></xdr:cNvPicPr>");
    m_text += "<xdr:blipFill><a:blip xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/"
              "2006/relationships\" r:embed=\""
              + relation + "\"/><a:stretch><a:fillRect/></a:stretch></xdr:blipFill>"
              + element("xdr:spPr", transform(picture.place(), "") + shape("rect")) + "</xdr:pic>";
    end();
}

void XlsxAnchors::add(const Chart& chart, const std::string& relation)
{
    begin(chart.place(), "twoCell");
    m_text += "<xdr:graphicFrame macro=\"\">";
    addProperties("GraphicFrame", "图表", "<xdr:cNvGraphicFramePr/>");
    m_text += "<xdr:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"0\" cy=\"0\"/></xdr:xfrm><a:graphic>"
              "<a:graphicData uri=\"http://schemas.openxmlformats.org/drawingml/2006/chart\">"
              "<c:chart xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
              "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" "
              "r:id=\""
              + relation + "\"/></a:graphicData></a:graphic></xdr:graphicFrame>";
    end();
}

void XlsxAnchors::add(const DrawnLine& line)
{
    begin(line.place(), "twoCell");
    m_text += "<xdr:cxnSp macro=\"\">";
    addProperties("CxnSp", "线条", "<xdr:cNvCxnSpPr/>");
    const char* dashes = line.dashStyle() == DashStyle::Dash ? "<a:prstDash val=\"dash\"/>"
                                                             : "<a:prstDash val=\"solid\"/>";
    m_text += element("xdr:spPr", transform(line.place(), flipsOf(line.ends())) + shape("line")
                                      + "<a:ln w=\"" + units(line.weight()) + "\">"
                                      + solidFill(line.color()) + dashes + "</a:ln>")
              + "</xdr:cxnSp>";
    end();
}

void XlsxAnchors::add(const TextLabel& label)
{
    begin(label.place(), "twoCell");
    m_text += R"(<xdr:sp macro="" textlink="">)";
    addProperties("Sp", "标签", "<xdr:cNvSpPr txBox=\"1\"/>");
    m_text += element("xdr:spPr", transform(label.place(), "") + shape("rect") + "<a:noFill/>"
                                      + "<a:ln><a:noFill/></a:ln>");
    m_text += "<xdr:txBody><a:bodyPr vertOverflow=\"overflow\" horzOverflow=\"overflow\" "
              "wrap=\"none\" lIns=\"0\" tIns=\"0\" rIns=\"0\" bIns=\"0\" rtlCol=\"0\" "
              "anchor=\"t\"><a:noAutofit/></a:bodyPr><a:lstStyle/><a:p><a:pPr algn=\"l\"/><a:r>"
              + font()
              + element("a:t", drawnText(label.text()).toHtmlEscaped().toUtf8().toStdString())
              + "</a:r></a:p></xdr:txBody></xdr:sp>";
    end();
}

std::string XlsxAnchors::take()
{
    return head + std::move(m_text) + "</xdr:wsDr>";
}

} // namespace excel
