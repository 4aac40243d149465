#pragma once

#include "import/ClassChanges.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Trap.h"

namespace importing {

/// Writes what was settled about students, one at a time, and counts it. A statement that fails is
/// shown, and the next one runs. The caller holds the batch.
class ClassChangeWriter
{
public:
    /// Throws Error if a table is missing.
    ClassChangeWriter(database::Connection& connection, const runtime::Trap& trap);

    /// A removed student goes from 信息表 by ID, from 成绩表 go the rows of his class and number.
    void write(const ClassChange& student);

    int moved() const { return m_moved; }
    int renamed() const { return m_renamed; }
    int removed() const { return m_removed; }
    int removedScores() const { return m_removedScores; }

private:
    void move(const ClassChange& student);
    void rename(const ClassChange& student);
    void remove(const ClassChange& student);

    database::Connection& m_connection;
    const runtime::Trap& m_trap;
    database::Statement& m_place;
    database::Statement& m_mark;
    database::Statement& m_removal;
    database::Statement& m_scoreRemoval;
    int m_moved = 0;
    int m_renamed = 0;
    int m_removed = 0;
    int m_removedScores = 0;
};

} // namespace importing
