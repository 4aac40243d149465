#pragma once

#include <unordered_map>
#include <vector>

#include <QCache>
#include <QHash>

#include "platform/database/Connection.h"
#include "platform/database/FileIdentity.h"
#include "platform/database/Statement.h"

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
    std::unordered_map<QString, Statement> statements;
    /// The ones last used by recordsets.
    QCache<QString, std::shared_ptr<Statement>> sharedStatements{64};
    /// A ReadBatch has begun and no write has ended it.
    bool reading = false;
    int batchDepth = 0;
    /// A write of the running batch failed so that it cannot be completed.
    bool batchFailed = false;
    std::function<void()> beforeFirstWrite;
    bool indexesChecked = false;
    UserLimits userLimits;
};

} // namespace database
