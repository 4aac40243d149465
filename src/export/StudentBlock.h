#pragma once

#include "export/ExportFigures.h"
#include "export/ExportSheets.h"
#include "export/ExportedScores.h"
#include "export/RankChart.h"
#include "export/ScoreExportRequest.h"

namespace exporting {

/// The columns of all blocks of a run. Columns count from 1; 0 stands for one that is not there.
struct BlockColumns
{
    explicit BlockColumns(const QStringList& columns);

    int count() const { return int(names.size()); }
    /// True with both of the columns that a chart shows.
    bool haveChartData() const { return labelColumn > 0 && rankColumn > 0; }

    QStringList names;
    int labelColumn; ///< 考试名称
    int rankColumn;  ///< 总分年名
};

/// The rows of one student on a sheet, written from the first one down. Each statement that fails
/// is shown, and the next one runs.
class StudentBlock
{
public:
    /// What all blocks of a run have in common.
    struct Run
    {
        library::ScoreLibrary& library;
        const ScoreExportRequest& request;
        const BlockColumns& columns;
        ExportFigures& figures;
        /// N: students of the grade of whoever had rows last.
        qint64 studentCount = 0;
    };

    /// The block begins in row `first` (S).
    StudentBlock(Run& run, excel::Worksheet& sheet, const ExportedStudent& student,
                 const StudentScores& scores, int first);

    /// So many rows a block has, without what follows it.
    static int rowsOf(const ScoreExportRequest& request, const StudentScores& scores);

    /// Heading, exams, averages and borders.
    void writeRows();
    /// The chart, down to the end of the page, and the page break. False if the page has no room
    /// left for its plot.
    bool drawChart();

    /// The row that was written last (r).
    int lastRow() const { return m_row; }

private:
    void writeInfo();
    void writeHeading();
    void takeStudentCount();
    void writeExams();
    void writeExam(int row);
    void writeAverages();
    template <class Average> void writeAverageRow(const QString& label, const Average& average);
    void drawBorders();
    double averageRank() const;

    Run& m_run;
    const ScoreExportRequest& m_request;
    const BlockColumns& m_columns;
    excel::Worksheet& m_sheet;
    const ExportedStudent& m_student;
    const StudentScores& m_scores;
    int m_begin;         // S
    int m_row;           // r
    int m_firstExam = 0; // first
    double m_rankSum = 0;
    int m_rankCount = 0;
};

} // namespace exporting
