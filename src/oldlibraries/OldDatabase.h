#pragma once

#include <vector>

#include "oldlibraries/FileHeader.h"
#include "oldlibraries/OldTable.h"
#include "oldlibraries/PageFile.h"

namespace oldlibraries {

/// Something that a file holds beside its own tables.
struct OldObject
{
    enum class Kind {
        LinkedTable, ///< a table that stands in another file
        Query,
        Form,
        Report,
        Macro,
        Module
    };

    Kind kind = Kind::Query;
    QString name;
};

/// A file of the old engine: its tables and their rows. The file is only read.
class OldDatabase
{
public:
    /// Reads the header, and no table. Throws OldFileError for a file that is none of the old
    /// engine, of another version, or encrypted.
    explicit OldDatabase(const QString& path);

    PageFile& file() { return m_file; }
    bool hasPassword() const { return !m_header.password.isEmpty(); }
    /// True also where there is no password.
    bool isPassword(const QString& text) const;

    /// The definitions of the tables that a user made, in the order in which they came. Throws
    /// OldFileError.
    std::vector<OldTable> readTables();
    /// What else a user made; without what the old engine made for that. Throws OldFileError.
    std::vector<OldObject> readOtherObjects();

private:
    void checkNotEncrypted();

    PageFile m_file;
    FileHeader m_header;
};

} // namespace oldlibraries
