#pragma once

#include <optional>
#include <vector>

#include <QString>
#include <QStringList>

#include "individual/RankKind.h"

namespace individual {

/// One subject or total of a chart, and the student's ranks in it.
struct RankedColumn
{
    QString name;
    int colour = 0;    ///< 0xBBGGRR
    QStringList ranks; ///< as they stand in 成绩表, one for each exam
};

/// What a chart is made of. Lengths are in twips.
struct RankChartRequest
{
    double width = 0;
    double height = 0;
    QString name; ///< the student's
    RankKind kind = RankKind::Grade;
    QStringList exams; ///< from left to right
    std::vector<RankedColumn> columns;
    qint64 headCount = 0; ///< the last rank that there can be
};

/// The ranks of a student across exams as lines, rank 1 at the top, as plain data: whoever shows it
/// adds nothing but fonts. Lengths are in twips from the surface's upper left corner; x grows to
/// the right, y downwards. Sizes of texts are not known here, so labels have a centre and an edge.
struct RankChart
{
    static constexpr double margin = 500;     ///< around the frame
    static constexpr double pointRadius = 30; ///< of the marker at a point
    static constexpr double notePlace = 60;   ///< the note's left and top

    struct Line
    {
        double x1 = 0;
        double y1 = 0;
        double x2 = 0;
        double y2 = 0;

        friend bool operator==(const Line&, const Line&) = default;
    };

    struct Segment
    {
        QString column;
        Line line;
        int colour = 0;

        friend bool operator==(const Segment&, const Segment&) = default;
    };

    struct Point
    {
        QString column;
        double x = 0;
        double y = 0;
        int colour = 0;

        friend bool operator==(const Point&, const Point&) = default;
    };

    struct RankLabel
    {
        QString text;
        QString tip;
        double x = 0;      ///< its centre
        double bottom = 0; ///< its lower edge
        int colour = 0;

        friend bool operator==(const RankLabel&, const RankLabel&) = default;
    };

    struct ExamLabel
    {
        QString text; ///< in two lines if it has more than two characters
        double x = 0; ///< its centre

        friend bool operator==(const ExamLabel&, const ExamLabel&) = default;
    };

    double width = 0;
    double height = 0;
    Line frame;               ///< two opposite corners; black
    std::vector<Line> dotted; ///< through the middle of each exam's slot; black
    // Those of a column stand together, and a later column lies over an earlier one.
    std::vector<Segment> segments;
    std::vector<Point> points;
    std::vector<RankLabel> rankLabels; ///< parallel to `points`
    std::vector<ExamLabel> examLabels;
    /// "共300人"; nothing where the former text stays.
    std::optional<QString> note;
    QString name; ///< centred in the upper margin

    /// Upper edge of an exam's label, which has this height.
    double examLabelTop(double labelHeight) const;
    /// Upper edge of the name's label, which has this height.
    static double nameTop(double labelHeight);
};

/// Where everything of the chart lies. A rank that is no number, or not above 0, has no point, and
/// the line goes on to the next one that has. Without a head count points lie where the one before
/// does, at first at 0.
RankChart rankChart(const RankChartRequest& request);

} // namespace individual
