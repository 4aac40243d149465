#pragma once

#include <map>
#include <vector>

#include <QString>
#include <QStringList>

namespace importing {

/// What a preview tells of a row, a cell, a class or a column. In the order in which it is listed.
enum class PreviewKind {
    NewClass,       ///< a class of the sheet without students
    Column,         ///< a column of a student list that is not taken
    NewStudent,     ///< will be added
    UnknownStudent, ///< the import will ask whether to add him
    OtherName,      ///< the library has another name for the class and number
    TakenNumber,    ///< the library has the class and number already, so that the import asks
    Twice,          ///< the class and number stand on another row too
    BadCell,        ///< empty, negative, above the full mark, or of no use to its column
    TextCell,       ///< a text that is read as a number or as 0
    Repeated,       ///< the student has scores in this exam and gets a second row
    OtherExam,      ///< the original rule overwrites the student's scores of another exam
    Changed,        ///< a score that gets another value
    NewInExam,      ///< the student has no scores in this exam yet
    Missing,        ///< has scores in this exam and is not on the sheet
    RowLeft         ///< a row behind the end, which is not taken
};

/// The kinds in their order.
const std::vector<PreviewKind>& previewKinds();
/// "新学生".
QString kindName(PreviewKind kind);
/// The same for programs: "NewStudent".
QString kindKey(PreviewKind kind);

/// One thing that a preview tells.
struct PreviewEntry
{
    PreviewKind kind = PreviewKind::NewStudent;
    /// Row of the sheet, counted from 1; 0 for what stands on none.
    int row = 0;
    QString classNumber;
    QString number;
    QString name;
    /// The subject or the heading of the column.
    QString subject;
    QString before;
    QString after;
    QString remark;
};

/// What an import would do, found without writing.
class Preview
{
public:
    /// As many entries of a kind are listed; all of them are counted.
    static constexpr int MostListed = 100'000;

    /// What is previewed: the exam or the list, and the sheet.
    QString title;
    /// What has to be said loudly; empty if there is nothing.
    QString warning;
    /// Further sentences.
    QStringList notes;
    /// Rows of the sheet that are taken.
    int rows = 0;
    /// Those whose class, number and name are the library's.
    int matched = 0;
    /// Scores of the exam that the import would leave as they are.
    int unchanged = 0;

    void add(PreviewEntry entry);
    /// How many entries of a kind were found.
    int count(PreviewKind kind) const;
    /// By kind, and in the order in which they were added.
    const std::vector<PreviewEntry>& entries(PreviewKind kind) const;

    /// "表中 30 行：与成绩库一致 28 人，新学生 2 人".
    QString headline() const;

private:
    std::map<PreviewKind, int> m_counts;
    std::map<PreviewKind, std::vector<PreviewEntry>> m_entries;
};

} // namespace importing
