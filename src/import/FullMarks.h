#pragma once

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
    /// The row being edited.
    int CurRow = 1;

    /// Fills the grid with the subjects and the defaults of the file; a missing file leaves the
    /// marks empty.
    void load();

    /// Takes a text as the mark of CurRow.
    void setText(const QString& text);

    /// Stores the marks that are above 0, tells of each other one in a message and makes it CurRow.
    /// So it is with a mark too large for a single-precision number. True if all are accepted.
    bool accept();

    /// Goes down one row, and behind the last one accepts; true if that was done.
    bool enter();

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
