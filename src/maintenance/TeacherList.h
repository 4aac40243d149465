#pragma once

#include "library/ScoreLibrary.h"
#include "platform/database/Recordset.h"
#include "platform/grid/FlexGrid.h"

namespace maintenance {

/// The teachers of one exam's classes, as 教师表 keeps them. The grid is filled from the stored
/// list of the exam, edited, and saved.
class TeacherList
{
public:
    explicit TeacherList(library::ScoreLibrary& scoreLibrary);

    /// A row for each class, a column for each subject and total; their names stand in row 0, the
    /// classes in column 0.
    grid::FlexGrid teachers;

    /// Makes the grid's headings and classes, with empty cells.
    void load();

    /// Shows the stored list of an exam, which is the one that save() writes.
    void show(const QString& exam);
    /// Shows the stored list of another exam; it is saved for the exam shown.
    void copyFrom(const QString& exam);

    /// The exam whose list is edited.
    const QString& exam() const { return m_exam; }

    /// Whether the grid differs from the stored list of the exam.
    bool hasUnsaved() const { return texts() != m_stored; }
    /// Whether it was changed since a list was shown or copied.
    bool wasEdited() const { return texts() != m_shown; }

    /// Saves a row for every class, in one batch. A name of more than 50 characters is refused,
    /// and the old one stays. False after the message if nothing was saved, as after a list that
    /// could not be read.
    bool save();

    /// The grid row of a class; 0 for one that has no students.
    int GetBJRow(const QString& classNumber) const;

private:
    void LoadJSMD(const QString& exam);
    void fillRow(database::Recordset& rows, int row);
    void saveRow(int row);
    QList<QStringList> texts() const;

    library::ScoreLibrary& m_library;
    QString m_exam;
    /// Whether the list that was shown or copied last could be read.
    bool m_isRead = true;
    /// The cells of the stored list of the exam, and those that were shown last.
    QList<QStringList> m_stored;
    QList<QStringList> m_shown;
};

} // namespace maintenance
