#pragma once

#include <optional>

#include "platform/database/Connection.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"

namespace importing {

/// The batch in which names are read and enter the library. What was answered reaches the disk
/// before the next question is shown, so that nothing is held open while the user thinks.
class IntakeBatch
{
public:
    /// Throws Error if the library cannot be written.
    explicit IntakeBatch(database::Connection& connection);

    /// Writes what is pending, asks, and begins anew. Throws Error if one of the two fails.
    runtime::Answer ask(const QString& text, const QString& title, runtime::Buttons buttons);

    /// Writes what is pending; the batch is over then. Throws Error, and nothing of it was written.
    void commit();

private:
    database::Connection& m_connection;
    std::optional<database::WriteBatch> m_batch;
};

} // namespace importing
