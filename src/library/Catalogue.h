#pragma once

#include <array>
#include <vector>

#include <QString>
#include <QStringList>

#include "platform/database/Connection.h"
#include "platform/runtime/Value.h"

namespace library {

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

/// What the program knows about the open library: exams, columns, streams and classes, all derived
/// from 考试名称表 and 信息表. The lists are rebuilt by GetKeLei and GetKSXX; the lists of one exam
/// are as the last caller left them. Failures are shown with the routine's tag, and old values
/// stay.
class Catalogue
{
public:
    explicit Catalogue(database::Connection& connection) : m_conn(connection) {}

    QStringList ExamList;       ///< exam names in 考试编号 order
    QStringList AllColumns;     ///< all columns of 考试名称表 behind the five fixed ones
    QStringList SubjectColumns; ///< those that are no totals
    QStringList TotalColumns;   ///< those whose names end in 总分
    QStringList TotalFormulas;  ///< parallel to TotalColumns, for the exam last asked for
    QStringList Streams;        ///< 科类 values of 信息表, at most two
    ColumnMarks ExamSubjects;   ///< filled by GetKSKM
    ColumnMarks ExamColumns;    ///< filled by GetKSKMZF: subjects and totals
    /// Classes of each stream in ascending order, in the order of Streams.
    std::vector<std::vector<ClassEntry>> ClassTable;

    /// Fills Streams; more than two leave it as it was.
    void GetKeLei();
    /// Fills ExamList and the column lists, then the class table.
    void GetKSXX();
    /// Fills ClassTable.
    void GetBJXX();
    /// Fills ExamSubjects for `exams` (names joined by ","). A 文 request without a row tries 理.
    void GetKSKM(const QString& exams, const QString& stream);
    /// Fills ExamColumns likewise; any stream without a row tries the other one.
    void GetKSKMZF(const QString& exams, const QString& stream);
    /// Fills TotalFormulas.
    void GetZFKMGS(const QString& exam, const QString& stream);
    /// Full marks of a subject; 0 if not examined.
    float getKMMF(const QString& exam, const QString& stream, const QString& subject);
    /// Full marks of a total: the sum over its formula.
    float GetZFMF(const QString& exam, const QString& stream, const QString& total);
    /// The exam's 考试编号, or the next free one.
    int GetKSBH(const QString& exam);
    /// 类别代码 of the class's first student; 1 if the class has none (after the engine's message).
    runtime::Value GetLeiBie(const runtime::Value& classNumber);
    /// 科类 of the class's first student; 1 if the class has none (after the engine's message).
    runtime::Value GetBJKL(const runtime::Value& classNumber);
    /// How many students the stream has, or one class of it; class 0 means the whole stream.
    qint64 GetZRS(const QString& stream, double classNumber);
    /// The student's line: name, class, number, category, stream.
    QString GetGRXX(qint64 id);
    /// The student's value in a rank column; "" if exam or column is "" or there is no row.
    QString GetMC(const QString& exam, const QString& column, qint64 id);
    /// The subject's teacher of the class in the exam, or "".
    QString GetJSMD(const QString& exam, double classNumber, const QString& subject);
    /// The same for several subjects at once, parallel to them.
    QStringList teachers(const QString& exam, double classNumber, const QStringList& subjects);

    bool isKeMu(const QString& name) const;   ///< a column, and no total
    bool isKeMuZF(const QString& name) const; ///< a column
    /// Position in AllColumns counted from 1, or -1.
    int GetKmID(const QString& name) const;

    /// True exactly when the last two characters are 总分.
    static bool isTotal(const QString& column);

private:
    database::Connection& m_conn;
};

} // namespace library
