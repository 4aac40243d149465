#pragma once

#include <functional>

#include <QStringList>

#include "platform/grid/FlexGrid.h"

namespace workbench {

/// A report of one exam into a grid.
using ExamReport = std::function<void(const QString& exam, grid::FlexGrid&)>;

/// Fills the grid with the report of each exam by itself: the tables follow one another, each
/// below a row that holds its exam's name.
void reportExamByExam(const QStringList& exams, const ExamReport& report, grid::FlexGrid& grid);

} // namespace workbench
