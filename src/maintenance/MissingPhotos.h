#pragma once

#include <vector>

#include "platform/database/Connection.h"
#include "platform/runtime/Value.h"

namespace maintenance {

/// A student of 信息表 who has no photo.
struct StudentWithoutPhoto
{
    qint64 id = 0;
    runtime::Value classNumber;
    runtime::Value number;
    QString name;
};

/// The students whose 照片名 is empty or NULL, in the order of their IDs. Throws database::Error.
std::vector<StudentWithoutPhoto> studentsWithoutPhoto(database::Connection& connection);

} // namespace maintenance
