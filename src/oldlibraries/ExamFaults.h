#pragma once

#include <vector>

#include <QHash>
#include <QSet>
#include <QStringList>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// An exam and a stream as the engine compares them.
struct ExamKey
{
    QString exam;
    QString stream;

    ExamKey(const QString& examName, const QString& streamName);
    friend bool operator==(const ExamKey&, const ExamKey&) = default;
    friend size_t qHash(const ExamKey& key, size_t seed = 0)
    {
        return qHashMulti(seed, key.exam, key.stream);
    }
};

/// The exams of 考试名称表.
class ListedExams
{
public:
    /// Throws database::Error.
    explicit ListedExams(database::Connection& library);

    /// Subjects and totals.
    const QStringList& columns() const { return m_columns; }
    bool knows(const QString& exam) const { return m_exams.contains(ExamKey(exam, {}).exam); }
    /// The full marks of an exam in step with the columns, those that the other stream lends where
    /// this one has no row; 0 for a total and for what was not examined. Empty without a row.
    std::vector<double> marks(const ExamKey& key) const;

    /// Adds what is wrong with the rows; `taken` are the exams that have scores.
    void tell(const QSet<ExamKey>& taken, std::vector<Finding>& findings) const;

private:
    struct Row
    {
        QString exam;
        QString stream;
        bool hasNumber;
        /// In step with the columns: full marks, 0 for a total, and formulas, "" for a subject.
        std::vector<double> marks;
        QStringList formulas;
    };

    void tellFormulas(std::vector<Finding>& findings) const;

    QStringList m_columns;
    std::vector<Row> m_rows;
    /// The first row of each.
    QHash<ExamKey, size_t> m_places;
    QSet<QString> m_exams;
};

/// Adds the default formulas that name a subject which the library lacks. Throws database::Error.
void findFormulaFaults(database::Connection& library, const QStringList& columns,
                       std::vector<Finding>& findings);

} // namespace oldlibraries
