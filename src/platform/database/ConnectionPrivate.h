#pragma once

#include <vector>

#include <QHash>

#include "platform/database/Connection.h"

namespace database {

struct Connection::Private
{
    Handle handle;
    QString path;
    FileShape shape;
    FileIdentity identity;
    QHash<QString, std::shared_ptr<const TableColumns>> tables;
    /// Columns of tables that were changed since; a caller may still be walking over them.
    std::vector<std::shared_ptr<const TableColumns>> formerTables;
    QHash<QString, std::shared_ptr<Statement>> statements;
    int batchDepth = 0;
    /// A write of the running batch failed so that it cannot be completed.
    bool batchFailed = false;
    bool indexesChecked = false;
    UserLimits userLimits;
};

} // namespace database
