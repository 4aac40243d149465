#pragma once

#include <optional>

#include "library/Catalogue.h"
#include "platform/runtime/AppPaths.h"

namespace maintenance {

/// The names of teachers to pick from. They stand in data/教师总名单.txt, a line each, as in
/// "语文_张三".
class TeacherPick
{
public:
    TeacherPick(const runtime::AppPaths& paths, const library::Catalogue& catalogue);

    /// Reads the file; without one there is no name to pick. A line without "_" is told, empty
    /// ones are passed over.
    void load();

    /// What stands for a column, counted from 1, each name behind a "+"; at 0 all names.
    const QString& element(int column) const { return m_elements.at(column); }

    /// The names for a column; nothing if it has none.
    std::optional<QStringList> names(int column) const;

private:
    void add(const QString& line);

    runtime::AppPaths m_paths;
    const library::Catalogue& m_catalogue;
    QStringList m_elements;
};

/// The file as a text to edit, a line break behind each line. Throws Error.
QString readMasterList(const runtime::AppPaths& paths);

/// Replaces the file by the text and a line end. Throws Error; the old file stays then.
void writeMasterList(const runtime::AppPaths& paths, const QString& text);

} // namespace maintenance
