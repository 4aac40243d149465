#pragma once

#include <QString>
#include <QStringList>

struct sqlite3;

namespace database {

/// What makes a file one of ours: the tables that it must have, and statements for the indexes that
/// are added at the first write ("create index if not exists …").
struct FileShape
{
    QStringList tables;
    QStringList indexes;
};

/// Judges a file by its first bytes, before the engine touches it. Throws Error for one that is
/// missing, none of ours or cut off.
void checkHeader(const QString& path);

/// True if the file begins as a library does, of the present format or the old one, be it whole or
/// cut off; false for what cannot be read.
bool isLibraryFile(const QString& path);

/// True if the journal beside a file can be of a write that was broken off in it: it is one of the
/// engine, and as many pages as it counts fit into the file.
bool isJournalOf(const QString& path);

/// Throws Error if the file lacks one of the tables, or if they cannot be read.
void checkTables(sqlite3* handle, const QString& path, const FileShape& shape);

} // namespace database
