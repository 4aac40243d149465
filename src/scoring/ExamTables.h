#pragma once

#include <map>
#include <memory>

#include "platform/database/ReadBatch.h"
#include "scoring/ExamTable.h"

namespace scoring {

/// The tables of one exam by stream, each read when it is first needed, all from one state of the
/// library.
class ExamTables
{
public:
    /// `scores` names the columns that are read at once; what scoring makes of them is read when it
    /// is asked for.
    ExamTables(database::Connection& connection, const QString& exam, const QStringList& scores)
        : m_conn(connection), m_reading(connection), m_exam(exam), m_scores(scores)
    {
    }

    /// Throws database::Error.
    ExamTable& of(const QString& stream);

    /// Writes those that were read in one batch. Throws database::Error; the exam is as before
    /// then.
    void write();

    const QString& exam() const { return m_exam; }

private:
    database::Connection& m_conn;
    database::ReadBatch m_reading;
    QString m_exam;
    QStringList m_scores;
    std::map<QString, std::unique_ptr<ExamTable>> m_tables;
};

} // namespace scoring
