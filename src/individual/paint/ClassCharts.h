#pragma once

#include <QStringList>

#include "individual/ClassStudents.h"
#include "platform/runtime/Progress.h"

namespace individual {

/// What became of an export of a class's charts.
struct ClassChartsResult
{
    bool isComplete = false;
    QStringList files; ///< that were written, by their full paths
};

/// Writes a page a student with his exams and his chart: a PDF file if `target` ends in .pdf,
/// otherwise a picture a student into the folder `target`, which is made. Says when it is done, and
/// why it is not: a class without students, a file or folder that cannot be written, 取消. A PDF
/// that is not complete leaves nothing, pictures that were written stay. Older pictures of the same
/// names are asked about; for an older PDF the caller has asked.
ClassChartsResult exportClassCharts(library::ScoreLibrary& scores,
                                    const ClassChartsRequest& request, const QString& target,
                                    runtime::Progress& progress);

/// True for the name of a PDF file.
bool isPdf(const QString& path);

} // namespace individual
