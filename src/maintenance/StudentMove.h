#pragma once

#include <QString>
#include <QtGlobal>

namespace maintenance {

/// Where a student is: his class, and his number in it.
struct StudentPlace
{
    double classNumber = 0;
    double number = 0;

    /// "3 班 12 号".
    QString text() const;
    // NOLINTNEXTLINE(modernize-use-nullptr): taken for a 0 that nobody wrote
    friend auto operator<=>(const StudentPlace&, const StudentPlace&) = default;
};

/// What becomes of a student's rows of 成绩表: they keep the class and number of their time and
/// stay when he is removed, or they go where he goes.
enum class EarlierScores { Stay, GoAlong };

/// What becomes of the stream and the category of a student who comes to a class of others.
enum class StreamAfter { OfNewClass, Kept };

/// One change that a user wants: a student goes to a place, changes places with another one, or is
/// removed. Students are known by ID.
struct StudentMove
{
    enum class Kind { Move, Swap, Remove };

    Kind kind = Kind::Move;
    qint64 id = 0;
    qint64 other = 0;     ///< of a Swap
    StudentPlace to = {}; ///< of a Move
    EarlierScores scores = EarlierScores::Stay;
    StreamAfter stream = StreamAfter::OfNewClass;
};

} // namespace maintenance
