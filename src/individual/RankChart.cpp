#include "individual/RankChart.h"

#include <cmath>

#include "platform/runtime/Numbers.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

constexpr double labelGap = 100;      // between a rank's label and its point
constexpr double examLabelRoom = 250; // below the frame

bool isNumeric(const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number);
}

/// Units of the text that its first two characters take.
qsizetype twoCharacters(const QString& text)
{
    qsizetype units = 0;
    for (int i = 0; i < 2 && units < text.size(); ++i)
        units += text[units].isHighSurrogate() ? 2 : 1;
    return std::min(units, text.size());
}

QString inTwoLines(const QString& exam)
{
    const qsizetype first = twoCharacters(exam);
    return first < exam.size() ? exam.left(first) + u'\n' + exam.mid(first) : exam;
}

/// Draws what a request asks for, column by column.
class Drawing
{
public:
    explicit Drawing(const RankChartRequest& request) : m_request(request) {}

    RankChart draw();

private:
    double middle(int exam) const { return RankChart::margin + (exam + 0.5) * m_step; }
    void drawExams();
    void drawColumn(const RankedColumn& column);
    void drawPoint(const RankedColumn& column, const QString& rank, double x, double y);

    const RankChartRequest& m_request;
    double m_step = 0;
    double m_plotHeight = 0;
    RankChart m_chart;
};

RankChart Drawing::draw()
{
    const double right = m_request.width - RankChart::margin;
    const double bottom = m_request.height - RankChart::margin;
    m_chart.width = m_request.width;
    m_chart.height = m_request.height;
    m_chart.name = m_request.name;
    m_chart.frame = {RankChart::margin, RankChart::margin, right, bottom};
    if (!m_request.exams.isEmpty())
        m_step = (right - RankChart::margin) / double(m_request.exams.size());
    m_plotHeight = bottom - RankChart::margin;
    drawExams();
    for (const RankedColumn& column : m_request.columns)
        drawColumn(column);
    return std::move(m_chart);
}

void Drawing::drawExams()
{
    const double bottom = m_chart.frame.y2;
    for (int exam = 0; exam < m_request.exams.size(); ++exam) {
        const double x = middle(exam);
        m_chart.dotted.push_back({x, bottom, x, bottom - m_plotHeight});
        m_chart.examLabels.push_back({inTwoLines(m_request.exams[exam]), x});
    }
}

void Drawing::drawColumn(const RankedColumn& column)
{
    double formerX = 0;
    double formerY = 0;
    double y = 0;
    for (int exam = 0; exam < m_request.exams.size(); ++exam) {
        m_chart.note = u"共%1人"_s.arg(m_request.headCount);
        const QString rank = column.ranks.value(exam);
        const double number = runtime::Val(rank);
        if (m_request.headCount > 0)
            y = RankChart::margin + number * m_plotHeight / double(m_request.headCount);
        if (!isNumeric(rank) || !(number > 0))
            continue;
        const double x = middle(exam);
        drawPoint(column, rank, x, y);
        if (exam > 0 && formerX > 0 && formerY > 0)
            m_chart.segments.push_back({column.name, {formerX, formerY, x, y}, column.colour});
        formerX = x;
        formerY = y;
    }
}

void Drawing::drawPoint(const RankedColumn& column, const QString& rank, double x, double y)
{
    const QString tip = column.name + rankCaption(m_request.kind) + u": "_s + rank;
    m_chart.rankLabels.push_back({rank, tip, x, y - labelGap, column.colour});
    m_chart.points.push_back({column.name, x, y, column.colour});
}

} // namespace

double RankChart::examLabelTop(double labelHeight) const
{
    return frame.y2 - (examLabelRoom - labelHeight) * 0.5;
}

double RankChart::nameTop(double labelHeight)
{
    return (margin - labelHeight) * 0.5;
}

RankChart rankChart(const RankChartRequest& request)
{
    return Drawing(request).draw();
}

} // namespace individual
