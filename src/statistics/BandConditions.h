#pragma once

#include <optional>

#include "statistics/ReportContext.h"

namespace statistics {

/// The value of a setting whose conditions are kept by subject.
extern const QString CustomData;

/// An interval of shares of the full marks, such as [0.85,1): "[" and "]" include the edge,
/// anything else leaves it out; an upper edge of 0, or none, is 1.
struct Interval
{
    QString lowerOperator;
    double lower = 0;
    QString upperOperator;
    double upper = 1;

    /// Throws runtime::Error for a text without a comma.
    static Interval parse(const QString& text);
    /// From 0 to 1, with the operators that the first and the last character of the text mean.
    static Interval whole(const QString& text);
    /// What keeps the text from being read as it is meant: why parse() refuses it, or what it
    /// passes over. "" for one that is in order.
    static QString complaint(const QString& text);
};

/// SQL conditions of an interval, one for each of the subjects. Nothing, after a message, for a
/// text that is no interval.
std::optional<QStringList> MakeCXTJ(const library::ColumnMarks& subjects, const QString& band);

} // namespace statistics
