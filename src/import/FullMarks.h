#pragma once

#include <optional>

#include "import/ImportState.h"
#include "platform/runtime/AppPaths.h"

namespace importing {

/// "输入各科满分": the full marks of an import's subjects, with the defaults of 满分.txt.
class FullMarks
{
public:
    FullMarks(ImportState& state, const runtime::AppPaths& paths);

    /// Columns 科目 and 满分, one row a subject.
    grid::FlexGrid marks;
    /// Fills the grid with the subjects and the defaults of the file; a missing file leaves the
    /// marks empty.
    void load();

    /// Takes a text as the mark of a row.
    void setText(int row, const QString& text);

    /// Stores the marks that are above 0 and tells of each other one in a message. So it is with a
    /// mark too large for a single-precision number. Gives the last row that was not accepted;
    /// nothing if all were.
    std::optional<int> accept();

    /// The subjects whose marks are still 0.
    QStringList openSubjects() const;
    /// True if every subject has its mark, or if the user leaves all the same.
    bool mayLeave() const;

    /// True for a text whose number is above 0 and not too large for a full mark.
    static bool isFullMark(const QString& text);

    /// The file of defaults then holds the subjects of this import and no others.
    void saveDefaults();

private:
    /// The default that the lines of the file give a subject. The name is looked for anywhere in a
    /// line, the mark is what stands behind as many characters, and a later line wins.
    static QString defaultMark(const QStringList& lines, const QString& subject);

    /// Stores a row's mark. False, after its message, if it is not above 0 or too large to store.
    bool storeMark(int row);

    ImportState& m_state;
    const runtime::AppPaths& m_paths;
};

} // namespace importing
