#pragma once

#include <optional>

#include "library/ScoreLibrary.h"
#include "scoring/ExamTables.h"

namespace scoring {

/// T = factor · z + offset.
struct TConversion
{
    double factor = 0;
    double offset = 0;

    /// Reads a text such as "10z+50"; nothing for one without "z+".
    static std::optional<TConversion> parse(const QString& setting);
};

/// Reads the setting "T分" into TFactor and TOffset of the library's Settings; one without "z+"
/// is refused with a message.
void GetZtoT(library::ScoreLibrary& scoreLibrary);
/// Mean of a column over the students that sat it; 0 if nobody did.
double GetPJF(library::ScoreLibrary& scoreLibrary, const QString& exam, const QString& column,
              const QString& stream);
/// The same within one class.
double GetBJPJF(library::ScoreLibrary& scoreLibrary, const QString& exam, const QString& column,
                const QString& stream, double classNumber);
/// Sample standard deviation (divisor n - 1) over the students that sat it; Null for fewer than
/// two.
runtime::Value GetBZC(library::ScoreLibrary& scoreLibrary, const QString& exam,
                      const QString& column, const QString& stream);

/// Computes Z and T scores of all subjects in the exam's tables, stream by stream. False, after its
/// message, if a stream could not be read; the others are computed all the same.
bool computeStandardScores(library::ScoreLibrary& scoreLibrary, ExamTables& tables);

} // namespace scoring
