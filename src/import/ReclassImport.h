#pragma once

#include <optional>

#include <QSet>

#include "import/ClassChanges.h"
#include "import/WorkbookIntake.h"
#include "library/ScoreLibrary.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Progress.h"

namespace importing {

class ClassChangeWriter;

/// "重新分班": moves the students of 信息表 to the classes and numbers of a sheet, and asks about
/// those who are missing there or bear another name.
class ReclassImport
{
public:
    ReclassImport(library::ScoreLibrary& scoreLibrary, WorkbookIntake& intake,
                  runtime::Progress& progress);

    /// The whole run. 分班表 is filled first, in a batch of its own; 信息表 and 成绩表 are written
    /// in one batch after the last question. When it stops, at most 分班表 was written. Once
    /// finished, streams and classes are loaded anew and the library tells of the change.
    ImportResult run(const QString& sheetName, Backup backup);

private:
    /// An answer that stands for all further questions of its kind, once there is one.
    using Standing = std::optional<runtime::Answer>;

    bool fillTable(const excel::Worksheet& sheet);
    /// False if the user cancelled.
    bool writeRows(const excel::Worksheet& sheet);
    bool mayGoOn() const;
    /// Settles what becomes of each student, in table order.
    void settle();
    ClassChange::Effect effectOf(const ClassChange& student);
    static runtime::Answer ask(const QString& text, runtime::Buttons buttons, Standing& standing);
    bool writeChanges();
    void writeStudents(ClassChangeWriter& writer);
    void finish();

    library::ScoreLibrary& m_library;
    WorkbookIntake& m_intake;
    runtime::Progress& m_progress;
    std::optional<ClassChanges> m_changes;
    /// That of the library when m_changes was read.
    qint64 m_dataVersion = 0;
    Standing m_missing;
    Standing m_otherNames;
    QSet<qint64> m_removed;
    /// What was written, in the words of the box ahead of the closing words.
    QString m_summary;
};

} // namespace importing
