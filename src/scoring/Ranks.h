#pragma once

#include <QStringList>

#include "library/ScoreLibrary.h"
#include "scoring/ExamTables.h"

namespace scoring {

/// Replaces each non-empty text by its rank among all (largest number first, equal ones share the
/// rank, the next takes its position in the list); empty texts stay empty and count as 0.
void MyPaiXU(QStringList& values);

/// Ranks the whole exam in its tables, stream by stream, grade and classes. False, after its
/// message, if a stream could not be read; the others are ranked all the same. Throws
/// database::Error.
bool computeRanks(library::ScoreLibrary& scoreLibrary, ExamTables& tables);

/// Ranks one group in the exam's tables: class 0 is the grade.
void computeGroupRanks(library::ScoreLibrary& scoreLibrary, ExamTables& tables,
                       const QString& stream, double classNumber);

} // namespace scoring
