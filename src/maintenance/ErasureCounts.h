#pragma once

#include <vector>

#include <QStringList>

#include "library/ScoreLibrary.h"

namespace maintenance {

/// What the library holds of one exam in one stream.
struct StreamOfExam
{
    QString exam;
    QString stream;
    qint64 rows = 0;     ///< of 成绩表
    qint64 students = 0; ///< who have a score in them
    qint64 scores = 0;   ///< of subjects
    qint64 absences = 0; ///< cells of subjects that say so

    friend bool operator==(const StreamOfExam&, const StreamOfExam&) = default;
};

/// What goes with exams that are erased, and what stays that names them.
struct ErasureCounts
{
    std::vector<StreamOfExam> streams; ///< exam by exam in the order asked for
    qint64 examRows = 0;               ///< of 考试名称表
    qint64 teacherRows = 0;            ///< of 教师表
    /// The exams that the setting 进行对比分析的考试 names.
    QStringList named;

    qint64 scoreRows() const;
    /// The counts in the words of the question ahead of the erasure.
    QString text() const;
    friend bool operator==(const ErasureCounts&, const ErasureCounts&) = default;
};

/// Counts from one state of the file. An exam is known by its name to the letter. Throws
/// database::Error.
ErasureCounts countErasure(library::ScoreLibrary& scoreLibrary, const QStringList& exams);

/// True for an exam that 考试名称表 or 成绩表 knows, whether it is listed or not. Throws
/// database::Error.
bool isExamStored(database::Connection& connection, const QString& exam);

} // namespace maintenance
