#pragma once

#include <vector>

#include <QString>
#include <QStringList>

#include "platform/database/Connection.h"

namespace library {

/// The columns of 考试名称表 ahead of those of the subjects and totals.
inline constexpr int fixedExamFields = 5;

/// Columns of one or more exams with their full marks, in the library's column order.
struct ColumnMarks
{
    QStringList names;
    /// Full marks, summed over the exams asked for; parallel to `names`.
    std::vector<double> marks;

    int count() const { return int(names.size()); }
};

/// A class of a stream and how many students it has.
struct ClassEntry
{
    double number;
    int students;
};

/// The names of a list joined by ","; an empty text has none.
QStringList examNames(const QString& exams);

/// The columns that a formula such as "语文+数学" adds up; an empty one has none.
QStringList formulaTerms(const QString& formula);

/// The exams that lists show of these names in 考试编号 order, each once. The test goes by
/// substring: an exam named as a part of an earlier one is not listed.
QStringList listedExams(const QStringList& names);

/// What the program knows about the open library: exams, columns, streams and classes, all derived
/// from 考试名称表 and 信息表. The lists are rebuilt by GetKeLei and GetKSXX. Failures are shown
/// with the routine's tag, and old values stay: what is asked for single exams is answered by
/// value, and an answer that fails is the one given last.
class Catalogue
{
public:
    explicit Catalogue(database::Connection& connection) : m_conn(connection) {}

    QStringList ExamList;       ///< exam names in 考试编号 order
    QStringList AllColumns;     ///< all columns of 考试名称表 behind the five fixed ones
    QStringList SubjectColumns; ///< those that are no totals
    QStringList TotalColumns;   ///< those whose names end in 总分
    QStringList Streams;        ///< 科类 values of 信息表, at most two
    /// Classes of each stream in ascending order, in the order of Streams.
    std::vector<std::vector<ClassEntry>> ClassTable;

    /// Fills Streams; more than two leave it as it was.
    void GetKeLei();
    /// Fills ExamList and the column lists, then the class table.
    void GetKSXX();
    /// Fills ClassTable.
    void GetBJXX();
    /// Subjects of `exams` (names joined by ",") with their full marks. A 文 request without a row
    /// tries 理.
    ColumnMarks GetKSKM(const QString& exams, const QString& stream);
    /// Subjects and totals likewise; any stream without a row tries the other one.
    ColumnMarks GetKSKMZF(const QString& exams, const QString& stream);
    /// The formulas of the totals in one exam, parallel to TotalColumns.
    QStringList GetZFKMGS(const QString& exam, const QString& stream);
    /// Full marks of a subject; 0 if not examined.
    float getKMMF(const QString& exam, const QString& stream, const QString& subject);
    /// Full marks of a total: the sum over its formula.
    float GetZFMF(const QString& exam, const QString& stream, const QString& total);
    /// The exam's 考试编号, or the next free one.
    int GetKSBH(const QString& exam);
    bool isKeMu(const QString& name) const;   ///< a column, and no total
    bool isKeMuZF(const QString& name) const; ///< a column
    /// Position in AllColumns counted from 1, or -1.
    int GetKmID(const QString& name) const;

private:
    database::Connection& m_conn;
    // The last answers of GetKSKM, GetKSKMZF and GetZFKMGS.
    ColumnMarks m_examSubjects;
    ColumnMarks m_examColumns;
    QStringList m_totalFormulas;
};

} // namespace library
