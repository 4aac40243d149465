#include "workbooks/writers/XlsxChart.h"

#include <cstdlib>
#include <limits>
#include <memory>
#include <new>

#include <xlsxwriter.h>

#include "platform/chart/ChartLayout.h"
#include "platform/chart/ChartLook.h"
#include "workbooks/model/Worksheet.h"
#include "workbooks/writers/WriterText.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

// What the library takes for an angle of 0 and for the colour 0.
constexpr int upright = 360;
constexpr lxw_color_t black = LXW_COLOR_BLACK;

struct FreeChart
{
    void operator()(lxw_chart* chart) const { lxw_chart_free(chart); }
};

struct FreeText
{
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): the stream allocated it
    void operator()(char* text) const { std::free(text); }
};

using LibraryChart = std::unique_ptr<lxw_chart, FreeChart>;

bool isInGrid(const CellRange& block)
{
    return wholeGrid.contains(block.firstRow, block.firstColumn)
           && wholeGrid.contains(block.lastRow, block.lastColumn);
}

QString absolute(int row, int column)
{
    return u'$' + columnName(column) + u'$' + QString::number(row);
}

QByteArray reference(const QString& sheetName, const CellRange& block)
{
    QString quoted = sheetName;
    quoted.replace(u'\'', u"''"_s);
    QString text = u"='"_s + quoted + u"'!"_s + absolute(block.firstRow, block.firstColumn);
    if (!block.isOneCell())
        text += u':' + absolute(block.lastRow, block.lastColumn);
    return text.toUtf8();
}

/// The library would take a text that begins with "=" for a reference.
void setTitle(lxw_chart_title& title, const QString& text)
{
    title.name = lxw_strdup(drawnText(text).toUtf8().constData());
}

lxw_chart_font boldFont(double size)
{
    lxw_chart_font font = {};
    font.size = size;
    font.bold = LXW_TRUE;
    return font;
}

lxw_chart_font plainFont()
{
    lxw_chart_font font = {};
    font.size = chart::textSize;
    font.rotation = upright;
    return font;
}

lxw_chart_line lineOf(lxw_color_t color, double width)
{
    lxw_chart_line line = {};
    line.color = color;
    line.width = float(width);
    return line;
}

void setTitles(lxw_chart* target, const chart::LineChart& design)
{
    lxw_chart_font titleFont = boldFont(design.titleSize);
    if (design.title.isEmpty()) {
        chart_title_off(target);
    } else {
        setTitle(target->title, design.title);
        chart_title_set_name_font(target, &titleFont);
    }
    if (design.axis.title.isEmpty())
        return;
    lxw_chart_font axisFont = boldFont(design.axis.titleSize);
    setTitle(target->y_axis->title, design.axis.title);
    chart_axis_set_name_font(target->y_axis, &axisFont);
}

/// A maximum that is not above the minimum is left to the program that shows the chart.
void setAxis(lxw_chart_axis* target, const chart::ValueAxis& axis)
{
    if (axis.minimum)
        chart_axis_set_min(target, *axis.minimum);
    if (axis.maximum && *axis.maximum > axis.minimum.value_or(-std::numeric_limits<double>::max()))
        chart_axis_set_max(target, *axis.maximum);
    if (axis.growth == chart::Growth::Downward)
        chart_axis_set_reverse(target);
}

void setPlot(lxw_chart* target)
{
    lxw_chart_fill white = {};
    white.color = LXW_COLOR_WHITE;
    lxw_chart_line areaBorder = lineOf(black, chart::thinLine);
    lxw_chart_line border = lineOf(chart::plotBorderColor, chart::thinLine);
    lxw_chart_line grid = lineOf(chart::gridlineColor, chart::thinLine);
    chart_chartarea_set_line(target, &areaBorder);
    chart_plotarea_set_fill(target, &white);
    chart_plotarea_set_line(target, &border);
    chart_axis_major_gridlines_set_line(target->y_axis, &grid);
    chart_legend_set_position(target, LXW_CHART_LEGEND_NONE);
}

void setAxisLooks(lxw_chart* target)
{
    for (lxw_chart_axis* axis : {target->x_axis, target->y_axis}) {
        lxw_chart_font font = plainFont();
        lxw_chart_line line = lineOf(black, chart::thinLine);
        chart_axis_set_num_font(axis, &font);
        chart_axis_set_line(axis, &line);
    }
}

void setSeriesLook(lxw_chart_series* series, const chart::LineChart& design)
{
    lxw_chart_line line = lineOf(chart::seriesColor, chart::seriesLine);
    lxw_chart_fill fill = {};
    fill.color = chart::seriesColor;
    chart_series_set_line(series, &line);
    chart_series_set_marker_type(series, design.hasMarkers ? LXW_CHART_MARKER_DIAMOND
                                                           : LXW_CHART_MARKER_NONE);
    chart_series_set_marker_fill(series, &fill);
    chart_series_set_marker_line(series, &line);
    if (!design.hasDataLabels)
        return;
    lxw_chart_font font = plainFont();
    chart_series_set_labels(series);
    chart_series_set_labels_position(series, LXW_CHART_LABEL_POSITION_ABOVE);
    chart_series_set_labels_font(series, &font);
}

lxw_series_data_point* addPoint(lxw_series_range* range)
{
    // The library frees it.
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
    void* memory = std::calloc(1, sizeof(lxw_series_data_point));
    auto* point = static_cast<lxw_series_data_point*>(memory);
    if (point == nullptr)
        throw std::bad_alloc();
    STAILQ_INSERT_TAIL(range->data_cache, point, list_pointers);
    ++range->num_data_points;
    return point;
}

void keepTexts(lxw_series_range* range, const QStringList& texts)
{
    range->has_string_cache = LXW_TRUE;
    for (const QString& text : texts) {
        lxw_series_data_point* point = addPoint(range);
        point->is_string = LXW_TRUE;
        point->string = lxw_strdup(drawnText(text).toUtf8().constData());
    }
}

void keepNumbers(lxw_series_range* range, const std::vector<std::optional<double>>& numbers)
{
    for (const std::optional<double>& number : numbers) {
        lxw_series_data_point* point = addPoint(range);
        point->no_data = number ? LXW_FALSE : LXW_TRUE;
        point->number = number.value_or(0);
    }
}

void addSeries(lxw_chart* target, const QString& sheetName, const Chart& chart,
               const chart::LineChart& filled)
{
    constexpr size_t mostKept =
        std::numeric_limits<decltype(lxw_series_range::num_data_points)>::max();
    lxw_chart_series* series =
        chart_add_series(target, reference(sheetName, chart.source()->categories).constData(),
                         reference(sheetName, chart.source()->values).constData());
    if (filled.values.size() <= mostKept && size_t(filled.categories.size()) <= mostKept) {
        keepTexts(series->categories, filled.categories);
        keepNumbers(series->values, filled.values);
    }
    setSeriesLook(series, filled);
}

std::string written(lxw_chart* chart)
{
    char* text = nullptr;
    size_t size = 0;
    chart->file = open_memstream(&text, &size);
    if (chart->file == nullptr)
        throw std::bad_alloc();
    lxw_chart_assemble_xml_file(chart);
    const bool isWhole = std::fclose(chart->file) == 0;
    chart->file = nullptr;
    const std::unique_ptr<char, FreeText> bytes(text);
    return isWhole ? std::string(text, size) : std::string();
}

std::string share(const char* name, double part, double whole)
{
    const QByteArray number = QByteArray::number(whole > 0 ? part / whole : 0, 'f', 6);
    return std::string("<c:") + name + " val=\"" + number.toStdString() + "\"/>";
}

/// The inside of the plot as shares of the chart. Where a chart has no room for it, the shares
/// would lie outside, and its place is left to the program that shows the chart.
std::string layout(const Chart& chart)
{
    const QSizeF frame = chart.place().size();
    const QRectF plot = chart::plotInFrame(frame, chart.design().axis.growth);
    if (plot.isEmpty())
        return "<c:layout/>";
    return "<c:layout><c:manualLayout><c:layoutTarget val=\"inner\"/><c:xMode val=\"edge\"/>"
           "<c:yMode val=\"edge\"/>"
           + share("x", plot.x(), frame.width()) + share("y", plot.y(), frame.height())
           + share("w", plot.width(), frame.width()) + share("h", plot.height(), frame.height())
           + "</c:manualLayout></c:layout>";
}

std::string withLayout(std::string part, const Chart& chart)
{
    const std::string plot = "<c:plotArea>";
    const std::string free = "<c:layout/>";
    const size_t begin = part.find(plot + free);
    return begin == std::string::npos
               ? std::string()
               : part.replace(begin + plot.size(), free.size(), layout(chart));
}

} // namespace

std::string chartPart(const Worksheet& sheet, const QString& sheetName, const Chart& chart,
                      int number)
{
    const LibraryChart target(lxw_chart_new(LXW_CHART_LINE));
    if (target == nullptr)
        throw std::bad_alloc();
    target->id = uint32_t(number - 1);
    setTitles(target.get(), chart.design());
    setAxis(target->y_axis, chart.design().axis);
    setAxisLooks(target.get());
    setPlot(target.get());
    if (chart.source() && isInGrid(chart.source()->categories) && isInGrid(chart.source()->values))
        addSeries(target.get(), sheetName, chart, filledChart(sheet, chart));
    return withLayout(written(target.get()), chart);
}

} // namespace excel
