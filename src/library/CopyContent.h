#pragma once

#include <functional>
#include <map>
#include <vector>

#include <QHash>
#include <QStringList>

#include "platform/database/Connection.h"

namespace library {

/// The rows of one exam in 成绩表 as fingerprints: the scores of the subjects one by one, the rest
/// of a row together.
struct ExamContent
{
    struct Row
    {
        qint64 student = 0;
        quint64 rest = 0;
        /// Where its scores begin in `scores`.
        size_t firstScore = 0;
    };

    std::vector<Row> rows;
    std::vector<quint64> scores;
    /// Of its rows in 考试名称表.
    quint64 description = 0;
};

/// A student's record: what a list shows, and fingerprints of it.
struct StudentContent
{
    double classNumber = 0;
    double number = 0;
    QString name;
    quint64 place = 0;
    quint64 nameMark = 0;
    quint64 rest = 0;
};

/// What two libraries have both, so that they are compared in it.
struct CommonColumns
{
    QStringList scores;      ///< subjects of 成绩表
    QStringList otherScores; ///< its other columns
    QStringList exams;       ///< of 考试名称表
    QStringList students;    ///< of 信息表
    /// Of each further table that both have.
    std::map<QString, QStringList> tables;
    QStringList pictures; ///< of 信息表, known by their lengths
};

CommonColumns commonColumns(database::Connection& first, database::Connection& second);

/// The subjects and totals that a library has.
QStringList subjectsOf(database::Connection& library);

/// All that is compared of one library.
struct LibraryContent
{
    std::map<QString, ExamContent> exams;
    std::map<qint64, StudentContent> students;
    /// The other tables by name.
    std::map<QString, quint64> tables;
};

/// Reads it all. `mayGoOn` is called with so many rows of 成绩表 as were read; false ends the
/// reading, and what is given is not all then. Throws Error.
LibraryContent readContent(database::Connection& library, const CommonColumns& columns,
                           const std::function<bool(int rows)>& mayGoOn);

} // namespace library
