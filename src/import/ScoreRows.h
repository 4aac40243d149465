#pragma once

#include <optional>
#include <utility>
#include <vector>

#include <QHash>
#include <QSet>

#include "import/ScoreTarget.h"
#include "platform/database/Connection.h"
#include "platform/database/Statement.h"

namespace importing {

/// A student as a row of 成绩表 has him.
struct ScoredStudent
{
    double classNumber = 0;
    double number = 0;
    QString name;
    /// 0 for one whom the library does not know.
    qint64 id = 0;
};

/// A row of 成绩表 that is overwritten.
struct FirstRow
{
    qint64 row = 0;
    QString exam;
    bool isOfThisExam = false;
};

/// Which name the first row of a student has to bear.
enum class RowName {
    Written,    ///< the sheet's, as it is looked for when rows are written: without an apostrophe
    OnTheSheet, ///< the sheet's
    Any         ///< no matter which: he may be renamed on the way
};

/// The first row of 成绩表 of the student's class and number with such a name, from whichever exam
/// it stems; nothing if there is none. Throws Error.
std::optional<FirstRow> firstRowOf(database::Connection& connection, const QString& exam,
                                   const ScoredStudent& student, RowName name);

/// The rows of 成绩表 that an exam has, read at once at the first question.
class ExamScoreRows
{
public:
    ExamScoreRows(database::Connection& connection, QString exam);

    /// The exam's row of the student, whatever name it bears; where none has the student's ID, the
    /// first of that class and number that has no ID (or 0) or bears the name. 0 if there is none.
    /// Throws Error.
    qint64 find(const ScoredStudent& student);

    /// From now on the row, which may be a new one, is this student's. Throws Error.
    void set(qint64 row, const ScoredStudent& student);

private:
    using Number = std::pair<double, double>;

    void read();
    void take(qint64 row, const ScoredStudent& student);
    qint64 findByNumber(const ScoredStudent& student) const;

    database::Connection& m_connection;
    QString m_exam;
    bool m_isRead = false;
    QHash<qint64, ScoredStudent> m_rows;
    /// Rows whose ID is 0 rather than none.
    QSet<qint64> m_zeroIds;
    /// The rows of an ID and of a class and number, ascending.
    QHash<qint64, std::vector<qint64>> m_byId;
    QHash<Number, std::vector<qint64>> m_byNumber;
};

} // namespace importing
