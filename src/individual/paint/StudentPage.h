#pragma once

#include <QFont>
#include <QRectF>

#include "individual/ClassStudents.h"

class QPainter;

namespace individual {

/// A page of A4 across with all about one student: the heading, the grid of his exams, what the
/// colours mean, and the chart in the room that is left. Lengths are in twips.
class StudentPage
{
public:
    static constexpr double width = 16838;
    static constexpr double height = 11906;

    /// Reads the student. Failures are shown with their tags; a student without exams has a page
    /// that says so.
    StudentPage(library::ScoreLibrary& scores, const ClassChartsRequest& request,
                const ClassStudent& student);

    /// Paints the page; `scale` is in dots a twip.
    void paint(QPainter& painter, double scale, const QFont& font) const;

private:
    void paintHeading(QPainter& painter, const QRectF& line) const;
    void paintLegend(QPainter& painter, const QRectF& line) const;

    QString m_heading;
    grid::FlexGrid m_exams;
    RankChartRequest m_chart;
    bool m_hasExams;
};

} // namespace individual
