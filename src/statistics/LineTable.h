#pragma once

#include <array>

#include <QStringList>

#include "statistics/ReportContext.h"

namespace statistics {

/// The numbers of a setting by stream, in the order of Catalogue::Streams.
using LineTable = std::array<QStringList, MaxStreams>;

/// More numbers than that make no table that anybody reads.
inline constexpr int MostLines = 1000;

/// What a list of numbers says, and what is wrong with it.
struct LineReading
{
    LineTable lines;
    /// Parts by stream that could not be read, the others being there.
    QStringList badParts;
    /// Why there are no lines at all; "" if there are.
    QString refusal;
    /// Entries that are no numbers, as typed.
    QStringList noNumbers;
};

/// Reads the list without telling anybody.
LineReading readLines(const QStringList& streams, const QString& value);

/// Reads a list of numbers: plain ("500,450", the same for all streams, kept as
/// numbers) or by stream ("文=500||理=520", kept as typed). Where only some of the three marks
/// stand the text is refused with a message that begins with `title`, and there are no numbers.
/// So it is with more than MostLines of them.
LineTable FenLiNumTJ(const QStringList& streams, const QString& title, const QString& value);

} // namespace statistics
