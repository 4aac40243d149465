#include "workbooks/writers/XlsxDrawings.h"

#include "workbooks/writers/XlsxAnchors.h"
#include "workbooks/writers/XlsxChart.h"

namespace excel {

namespace {

const std::string drawingType = "application/vnd.openxmlformats-officedocument.drawing+xml";
const std::string chartType = "application/vnd.openxmlformats-officedocument.drawingml.chart+xml";

std::string partName(const std::string& kind, int number, const std::string& ending)
{
    return kind + std::to_string(number) + '.' + ending;
}

/// The list of parts that a part refers to; their ids count from rId1.
class Relations
{
public:
    /// Gives the id.
    std::string add(const std::string& kind, const std::string& target);
    std::string text() const;

private:
    std::string m_entries;
    int m_count = 0;
};

std::string Relations::add(const std::string& kind, const std::string& target)
{
    std::string id = "rId" + std::to_string(++m_count);
    m_entries += "<Relationship Id=\"" + id
                 + "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
                 + kind + "\" Target=\"../" + target + "\"/>";
    return id;
}

std::string Relations::text() const
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<Relationships "
           "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
           + m_entries + "</Relationships>";
}

/// The ending of a picture's file, by its first bytes.
std::string endingOf(const QByteArray& picture)
{
    if (picture.startsWith("\x89PNG"))
        return "png";
    return picture.startsWith("BM") ? "bmp" : "jpeg";
}

} // namespace

void XlsxDrawings::addPart(const std::string& name, const std::string& type,
                           std::function<std::string()> text)
{
    m_parts.push_back({"xl/" + name, type, std::move(text)});
}

/// Equal pictures share a part.
std::string XlsxDrawings::mediaOf(const Picture& picture)
{
    std::string& name = m_media[picture.bytes()];
    if (name.empty()) {
        const std::string ending = endingOf(picture.bytes());
        name = partName("media/image", int(m_media.size()), ending);
        addPart(name, "image/" + ending, [&picture] { return picture.bytes().toStdString(); });
    }
    return name;
}

std::string XlsxDrawings::add(const Worksheet& sheet, size_t number, const QString& sheetName)
{
    if (sheet.drawings().empty())
        return {};
    XlsxAnchors anchors(sheet.geometry());
    Relations relations;
    for (const Drawing& drawing : sheet.drawings()) {
        if (const auto* picture = std::get_if<Picture>(&drawing)) {
            anchors.add(*picture, relations.add("image", mediaOf(*picture)));
        } else if (const auto* chart = std::get_if<Chart>(&drawing)) {
            const int chartNumber = ++m_charts;
            const std::string name = partName("charts/chart", chartNumber, "xml");
            anchors.add(*chart, relations.add("chart", name));
            addPart(name, chartType, [&sheet, sheetName, chart, chartNumber] {
                return chartPart(sheet, sheetName, *chart, chartNumber);
            });
        } else if (const auto* line = std::get_if<DrawnLine>(&drawing)) {
            anchors.add(*line);
        } else if (const auto* label = std::get_if<TextLabel>(&drawing)) {
            anchors.add(*label);
        }
    }
    const std::string name = partName("drawing", ++m_sheets, "xml");
    addPart("drawings/" + name, drawingType, [text = anchors.take()] { return text; });
    addPart("drawings/_rels/" + name + ".rels", {}, [text = relations.text()] { return text; });
    Relations ofSheet;
    const std::string id = ofSheet.add("drawing", "drawings/" + name);
    addPart("worksheets/_rels/sheet" + std::to_string(number) + ".xml.rels", {},
            [text = ofSheet.text()] { return text; });
    return "<drawing r:id=\"" + id + "\"/>";
}

} // namespace excel
