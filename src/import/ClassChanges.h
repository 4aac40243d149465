#pragma once

#include <vector>

#include "platform/database/Connection.h"
#include "platform/runtime/Value.h"

namespace importing {

/// A student of 信息表, and what 分班表 says of him.
struct ClassChange
{
    enum class Found {
        SameName,
        OtherName,
        Nowhere,      ///< 分班表 has no row with his class and number
        WithoutPlace, ///< his row lacks the new class or number
        WithoutNumber ///< he has no class or number, so that no row can be looked for
    };
    enum class Effect { None, Move, Rename, Remove };

    qint64 id = 0;
    double classNumber = 0;
    double number = 0;
    QString name = {};
    Found found = Found::Nowhere;
    /// What an answer, or the equal name, decided.
    Effect effect = Effect::None;

    /// ID of the row of 分班表, and what it says.
    qint64 row = 0;
    runtime::Value newClass = {};
    runtime::Value newNumber = {};
    runtime::Value newName = {};
};

/// What a re-classing will do, counted before anyone is asked.
struct ClassChangeCounts
{
    int rows = 0;
    int unusedRows = 0;
    int moved = 0;
    int otherNames = 0;
    /// Of the other names, those that are empty in 分班表.
    int emptyNames = 0;
    int missing = 0;
    /// Rows of 成绩表 that the removal of all the missing would take, and those of them that
    /// belong to somebody else.
    qint64 scores = 0;
    qint64 scoresOfOthers = 0;
    /// Of the missing, those whose class and number another student has, too: what the removal of
    /// one takes of 成绩表 is also that of the other.
    int twins = 0;
    int withoutPlace = 0;
    int withoutNumber = 0;
    /// Of the moved, those whose new class or number is 0, and those who come to where another
    /// student is then.
    int toZero = 0;
    int sharing = 0;

    /// The counts in the words of the box ahead of the questions.
    QString question() const;
};

/// The students of 信息表 in table order, each with the first row of 分班表 that has his class and
/// number.
class ClassChanges
{
public:
    /// Reads both tables; the caller sees to it that they are of one state. Throws Error.
    explicit ClassChanges(database::Connection& connection);

    std::vector<ClassChange> students;
    ClassChangeCounts counts;

private:
    void readStudents(database::Connection& connection);
    void findRows(database::Connection& connection);
    void count(const ClassChange& student);
    void countSharing();
    void countScores(database::Connection& connection);
};

} // namespace importing
