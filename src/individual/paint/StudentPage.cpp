#include "individual/paint/StudentPage.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPainter>

#include "individual/paint/LinePen.h"
#include "individual/paint/RankChartPainter.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

constexpr double margin = 720;
constexpr double headingHeight = 480;
constexpr double legendHeight = 360;
constexpr double highestRow = 300;
constexpr double tableShare = 0.5; // of the page's height at most
constexpr double widestStretch = 2;
constexpr double smallestFont = 0.5; // of the size that was meant, ahead of an ellipsis
constexpr int longestCell = 20;
constexpr double ruleWidth = 10;

bool hasRows(library::ScoreLibrary& scores, qint64 id)
{
    database::Recordset rows;
    rows.Open(u"select * from 成绩表 where id=?"_s, {id}, scores.Conn);
    return !rows.Eof();
}

/// Puts a text into one line of an area, in a smaller size if it is too wide, and cut if that does
/// not help.
void drawFitted(QPainter& painter, const QRectF& area, const QString& text, double size,
                Qt::Alignment alignment)
{
    QFont font = painter.font();
    font.setPixelSize(std::max(1, int(size)));
    QString shown = text.left(mostPainted).simplified();
    const double wide = QFontMetricsF(font, painter.device()).horizontalAdvance(shown);
    if (wide > area.width()) {
        font.setPixelSize(std::max(1, int(size * std::max(smallestFont, area.width() / wide))));
        shown =
            QFontMetricsF(font, painter.device()).elidedText(shown, Qt::ElideRight, area.width());
    }
    const QFont former = painter.font();
    painter.setFont(font);
    painter.drawText(area, alignment | Qt::AlignVCenter | Qt::TextSingleLine, shown);
    painter.setFont(former);
}

/// The grid on the page: its columns as wide as there is room, its rows as high as needed.
class ExamTable
{
public:
    ExamTable(const grid::FlexGrid& exams, double width, double mostHeight) : m_exams(exams)
    {
        for (int col = 0; col < exams.Cols(); ++col)
            m_naturalWidth += exams.ColWidth(col);
        m_stretch = std::min(width / m_naturalWidth, widestStretch);
        m_rowHeight = std::min(highestRow, mostHeight / exams.Rows());
    }

    double width() const { return m_stretch * m_naturalWidth; }
    double height() const { return m_rowHeight * m_exams.Rows(); }
    void paint(QPainter& painter, const QPointF& corner, double scale) const;

private:
    static void paintCell(QPainter& painter, LinePen& pen, const QRectF& cell, const QString& text);

    const grid::FlexGrid& m_exams;
    double m_naturalWidth = 0;
    double m_stretch = 1;
    double m_rowHeight = 0;
};

void ExamTable::paint(QPainter& painter, const QPointF& corner, double scale) const
{
    painter.save();
    painter.setPen(QPen(Qt::black, std::max(1.0, ruleWidth * scale)));
    const QRectF place(corner * scale, QSizeF(width(), height()) * scale);
    const double high = m_rowHeight * scale;
    const double size = std::min(RankChartPainter::textSize, m_rowHeight * 0.7) * scale;
    QFont font = painter.font();
    font.setPixelSize(std::max(1, int(size)));
    LinePen pen(painter, font);
    for (int row = 0; row <= m_exams.Rows(); ++row)
        painter.drawLine(QLineF(place.left(), place.top() + row * high, place.right(),
                                place.top() + row * high));
    double x = place.left();
    for (int col = 0; col < m_exams.Cols(); ++col) {
        painter.drawLine(QLineF(x, place.top(), x, place.bottom()));
        const double wide = m_exams.ColWidth(col) * m_stretch * scale;
        for (int row = 0; row < m_exams.Rows(); ++row)
            paintCell(painter, pen, {x, place.top() + row * high, wide, high},
                      m_exams.TextMatrix(row, col));
        x += wide;
    }
    painter.drawLine(QLineF(x, place.top(), x, place.bottom()));
    painter.restore();
}

void ExamTable::paintCell(QPainter& painter, LinePen& pen, const QRectF& cell, const QString& text)
{
    const double gap = cell.height() * 0.05;
    if (text.size() <= longestCell && !text.contains(u'\n')
        && pen.width(text) <= cell.width() - 2 * gap)
        pen.drawCentred(text, cell.center().x(), cell.center().y() - pen.lineHeight() / 2);
    else
        drawFitted(painter, cell.adjusted(gap, 0, -gap, 0), text, painter.font().pixelSize(),
                   Qt::AlignHCenter);
}

} // namespace

StudentPage::StudentPage(library::ScoreLibrary& scores, const ClassChartsRequest& request,
                         const ClassStudent& student)
    : m_heading(studentHeading(request.classNumber, student)),
      m_hasExams(hasRows(scores, student.id))
{
    StudentExams exams(scores);
    exams.MSFlexGrid1.setRows(1);
    if (m_hasExams)
        exams.ShowGeRenCJ(student.id);
    m_chart = readRanks(scores, exams, request.ticked, request.kind);
    m_chart.name = student.name;
    m_exams = std::move(exams.MSFlexGrid1);
}

void StudentPage::paintHeading(QPainter& painter, const QRectF& line) const
{
    drawFitted(painter, line, m_heading, line.height() * 0.6, Qt::AlignLeft);
    if (!m_hasExams)
        drawFitted(painter, line, u"没有考试成绩"_s, line.height() * 0.5, Qt::AlignRight);
}

void StudentPage::paintLegend(QPainter& painter, const QRectF& line) const
{
    const QString kind = rankCaption(m_chart.kind);
    const double entry = line.width() / double(m_chart.columns.size() + 1);
    const double side = line.height() * 0.4;
    painter.setPen(Qt::black);
    QRectF place(line.x(), line.y(), std::min(entry, line.height() * 5), line.height());
    drawFitted(painter, place, kind, line.height() * 0.5, Qt::AlignLeft);
    for (const RankedColumn& column : m_chart.columns) {
        place.moveLeft(place.right());
        painter.fillRect(QRectF(place.x(), place.center().y() - side / 2, side, side),
                         chartColor(column.colour));
        drawFitted(painter, place.adjusted(side * 1.3, 0, -side * 0.5, 0), column.name,
                   line.height() * 0.5, Qt::AlignLeft);
    }
}

void StudentPage::paint(QPainter& painter, double scale, const QFont& font) const
{
    const double wide = width - 2 * margin;
    const auto line = [&](double top, double high) {
        return QRectF(margin * scale, top * scale, wide * scale, high * scale);
    };
    painter.save();
    QFont smooth = font;
    smooth.setStyleStrategy(QFont::NoSubpixelAntialias);
    painter.setFont(smooth);
    painter.setPen(Qt::black);
    paintHeading(painter, line(margin, headingHeight));
    const ExamTable table(m_exams, wide, height * tableShare);
    double y = margin + headingHeight;
    table.paint(painter, {margin, y}, scale);
    y += table.height();
    paintLegend(painter, line(y, legendHeight));
    y += legendHeight;
    RankChartRequest request = m_chart;
    request.width = wide;
    request.height = height - margin - y;
    const RankChart chart = rankChart(request);
    painter.translate(margin * scale, y * scale);
    RankChartPainter(chart, scale, font).paint(painter);
    painter.restore();
}

} // namespace individual
