#pragma once

#include <QStringList>

namespace maintenance {

/// The head of a text, as much of it as a message says again.
QString quoted(const QString& text);

/// A name as a message shows it: on one line, and cut if it is long.
QString shownName(const QString& name);

/// The names of exams for a sentence: the first of them, and how many there are.
QString shownExams(const QStringList& exams);

/// The number that a text is, for a condition. Throws database::Error for a text that is none, with
/// `complaint`, whose %1 becomes the text.
double numberIn(const QString& text, const QString& complaint);

} // namespace maintenance
