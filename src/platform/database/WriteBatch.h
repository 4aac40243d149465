#pragma once

#include <optional>

#include "platform/runtime/Phase.h"

namespace database {

class Connection;

/// A phase that reads and writes one state of the file: everything written while it lives reaches
/// the disk together at commit(), or not at all. A batch that ends without commit() leaves the file
/// as it was. One inside another reaches the disk with the outer one; without commit() its own part
/// is taken back.
class WriteBatch
{
public:
    /// Throws Error if the file cannot be written.
    explicit WriteBatch(Connection& connection);
    ~WriteBatch();
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

    /// Throws Error if the engine could not write it all; the file is as before the batch then.
    void commit();

private:
    void takeBack();
    void end();

    Connection& m_connection;
    bool m_outermost;
    bool m_open = true;
    std::optional<runtime::Phase> m_phase;
};

} // namespace database
