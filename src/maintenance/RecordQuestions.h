#pragma once

#include <optional>

#include "platform/database/Connection.h"
#include "platform/runtime/Value.h"

namespace maintenance {

/// The fields of a student that lists, ranks and imports depend on.
struct StudentFields
{
    runtime::Value classNumber;
    runtime::Value number;
    runtime::Value name;
    runtime::Value stream;
    runtime::Value category;

    friend bool operator==(const StudentFields&, const StudentFields&) = default;
};

/// What a save makes of a student.
struct RecordChange
{
    qint64 id = 0;
    StudentFields before;
    StudentFields after;
};

/// Where a new name goes: into 信息表 alone, or also into the student's rows of 成绩表.
enum class NameScope { RecordAlone, EarlierScores };

/// Asks about a third stream, a number that another student of the class has, and a new name of a
/// student who has scores. Nothing is asked where nothing is at stake. Where the new name goes;
/// nothing if the save is given up. Throws database::Error.
std::optional<NameScope> askAboutChange(database::Connection& connection,
                                        const RecordChange& change);

/// Puts the name into all rows of 成绩表 with that student's ID. Throws database::Error.
void renameScores(database::Connection& connection, qint64 id, const runtime::Value& name);

} // namespace maintenance
