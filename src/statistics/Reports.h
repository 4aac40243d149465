#pragma once

#include "platform/grid/FlexGrid.h"
#include "statistics/ReportContext.h"
#include "statistics/ReportFrame.h"

namespace statistics {

// The reports. Each takes exam names joined by ",", empties the grid and fills it with one block
// for each stream (or for each stream and item), all classes of the library, under the category
// filter. Those on one exam take the last of the list, after a question, and leave its name in
// `exams`. Percentages are shares of the class's students today. A statement that fails is shown,
// and its cell stays empty.

/// 考试人数: sitting/absent/all students of each class in each subject and total. One exam.
void TJKSRS(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);

/// 高、低分段: students in the high and in the low band of each subject.
void TJGDFD(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);

/// Students in a band of each subject and their share of the class; `title` is also the name of the
/// setting that holds the band (各科优秀率, 各科良好率, 各科及格率, 各科差生率).
void TJGK4l(ReportContext& context, QString& exams, const QString& title, grid::FlexGrid& grid,
            Transfer transfer);

/// 各科平均分, with the rank among the classes and, by setting, the teacher. Absent students count
/// with their -1.
void TJGKPJF(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);
/// 各科最高分, absent students included.
void TJGKZGF(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);
/// 各科最低分, without absent students.
void TJGKZDF(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);
/// 各科标准差 (divisor n - 1), without absent students.
void TJGKBZC(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);

/// Students in bands of equal width, a block for each subject and total; `title` is also the name
/// of the setting. One exam.
void TJGFSDRS(ReportContext& context, QString& exams, const QString& title, grid::FlexGrid& grid,
              Transfer transfer);

/// 总分上线人数: students at or above each line of the column 总分.
void TJZFSXRS(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);

/// 各名次段人数: students among the first or last x of the grade, a block for each subject and
/// total.
void TJGMCDRS(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);
/// The same by the bands of 历次考试进入年级前x名人数, which its titles quote.
void TJLCKSQxM(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);

/// 各名次段均分: number, average and rank of each class within each band of ranks. One exam.
void TJGKGMCDJF(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer);

} // namespace statistics
