#pragma once

#include "statistics/FigureGroup.h"

namespace statistics {

/// A condition as a sentence's part: "语文不低于 102 分、不高于 120 分". One that is no chain of
/// comparisons stands as it is.
QString conditionWords(const Condition& condition);

/// The sentence that says which students stand behind a figure and how many they are.
QString figureSentence(const Figure& figure, const FigureGroup& group);

/// What else is to be said of an aggregate (who is counted in or left out, the two ends), of a rank
/// (the classes in their order), of 考试人数, and of the category filter. "" for nothing.
QString figureDetails(const Figure& figure, const FigureGroup& group);

/// That the library says something else now than the table does; "" if it does not.
QString figureChange(const Figure& figure, const FigureGroup& group);

/// How 考试人数 counts a student with this mark; nothing stands for no value.
QString attendanceWord(std::optional<double> mark);

/// Why a student of the class has no row behind a figure of 考试人数.
QString elsewhereWord(ScoreElsewhere place);

/// The students that a Settings::CategoryFilter lets through.
QString filterSentence(const QString& filter);

} // namespace statistics
