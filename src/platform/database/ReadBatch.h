#pragma once

#include "platform/runtime/Dialogs.h"

namespace database {

class Connection;

/// What is read while it lives is read from one state of the file, whose lock is taken once instead
/// of by each statement. The first write ends that state, and so does a box that waits for the
/// user; what is read from then on is read as without it. Inside another batch, and without an open
/// file, it does nothing.
class ReadBatch
{
public:
    explicit ReadBatch(Connection& connection);
    ~ReadBatch();
    ReadBatch(const ReadBatch&) = delete;
    ReadBatch& operator=(const ReadBatch&) = delete;

private:
    void end();

    Connection& m_connection;
    bool m_begun = false;
    runtime::BeforeDialogs m_beforeDialogs;
};

} // namespace database
