#pragma once

#include <array>
#include <map>
#include <memory>

#include "library/ScoreLibrary.h"
#include "statistics/ExamRows.h"
#include "statistics/ReportFigures.h"
#include "workbooks/model/Application.h"

namespace statistics {

/// Streams that a library can have.
inline constexpr int MaxStreams = 2;

/// Where the blocks of one stream go in the comprehensive analysis.
struct StreamSlot
{
    excel::Workbook* ReportBook = nullptr;
    excel::Worksheet* ReportSheet = nullptr;
    /// The sheet's next free row, counted from 1.
    int SheetRow = 1;
};

/// What the reports share, and what one report leaves behind for the next. The category filter is
/// the library's (Settings::CategoryFilter).
class ReportContext
{
public:
    explicit ReportContext(library::ScoreLibrary& scoreLibrary) : library(scoreLibrary) {}

    library::ScoreLibrary& library;

    /// The conditions that MakeCXTJ gave last: a band that it cannot read goes on with them.
    QStringList BandConditions;
    std::array<StreamSlot, MaxStreams> streamSlots;
    /// What the cells stand for that reports filled whose blocks stay in the grid.
    ReportFigures figures;

    /// The exam's rows under the category filter in force, read when they are first asked for and
    /// kept for the reports that follow. Throws database::Error.
    const ExamRows& rows(const QString& exam, const QString& stream);
    /// To be called when a run begins, since rows may have changed, and when it ends.
    void forgetRows() { m_rows.clear(); }

private:
    /// Exam, stream, filter.
    using Key = std::array<QString, 3>;

    std::map<Key, std::unique_ptr<ExamRows>> m_rows;
};

} // namespace statistics
