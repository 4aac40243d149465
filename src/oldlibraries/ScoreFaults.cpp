#include "oldlibraries/ScoreFaults.h"

#include <optional>
#include <utility>

#include <QHash>

#include "oldlibraries/FaultKind.h"
#include "oldlibraries/StudentFaults.h"
#include "oldlibraries/SubjectColumns.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/runtime/ComparedNumber.h"
#include "platform/runtime/Numbers.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

const QString scoreTable = u"成绩表"_s;

constexpr int idField = 0;
constexpr int classField = 1;
constexpr int examField = 2;
constexpr int streamField = 3;
constexpr int rowIdField = 4;
constexpr int firstScore = 5;

/// What is known of an exam and stream once a row of it was met.
struct MetExam
{
    /// Number of the exam, whatever the stream.
    int number = 0;
    std::vector<double> marks;
};

bool isAbove(double score, double mark)
{
    return score > mark && runtime::roundedToCompare(score) > runtime::roundedToCompare(mark);
}

/// One pass over the scores.
class ScorePass
{
public:
    ScorePass(database::Connection& library, const ListedExams& exams, const QSet<qint64>& students)
        : m_exams(exams),
          m_students(students),
          m_rows(library,
                 database::sqlWith(
                     u"select id, 班级, 考试名称, 科类, rowid%1 from 成绩表 order by rowid"_s,
                     {database::SqlPiece::moreNames(exams.columns())})),
          m_student(library, u"select 班级, 学号, 姓名 from 成绩表 where rowid=?"_s),
          m_scores(size_t(exams.columns().size()))
    {
    }

    void run()
    {
        while (m_rows.step()) {
            ++m_row;
            findExam();
            lookAtStudent();
            if (!m_rows.isNull(classField) && !m_rows.value(classField).isNumber())
                m_text.add(m_row, u"班级"_s, m_rows.text(classField));
            lookAtScores();
        }
    }

    void tell(std::vector<Finding>& findings)
    {
        tellUnknownExams();
        for (const FaultKind* kind : {&m_unknownExam, &m_noId, &m_nobody, &m_twice, &m_text,
                                      &m_noNumber, &m_below, &m_above})
            kind->tell(findings);
    }

    QSet<ExamKey> taken() const { return QSet<ExamKey>(m_met.keyBegin(), m_met.keyEnd()); }

private:
    void findExam()
    {
        // Rows of one exam mostly stand together.
        if (m_current && m_rows.bytes(examField) == m_examBytes
            && m_rows.bytes(streamField) == m_streamBytes)
            return;
        m_examBytes = m_rows.bytes(examField).toByteArray();
        m_streamBytes = m_rows.bytes(streamField).toByteArray();
        m_exam = m_rows.text(examField);
        m_stream = m_rows.text(streamField);
        const ExamKey key(m_exam, m_stream);
        if (!m_met.contains(key))
            m_met.insert(key, {numberOf(key.exam), m_exams.marks(key)});
        m_current = m_met.value(key);
    }

    int numberOf(const QString& exam)
    {
        const auto known = m_numbers.constFind(exam);
        if (known != m_numbers.constEnd())
            return *known;
        m_names.append(m_exam);
        m_rowCounts.push_back(0);
        return *m_numbers.insert(exam, int(m_numbers.size()));
    }

    void lookAtStudent()
    {
        ++m_rowCounts[size_t(m_current->number)];
        const runtime::Value id = m_rows.value(idField);
        if (id.isNull())
            return addWithStudent(m_noId, u"id"_s, {});
        if (!id.isNumber() || !m_students.contains(m_rows.integer(idField)))
            return addWithStudent(m_nobody, u"id"_s, id.text());
        const quint64 place = quint64(m_current->number) << 32 | quint32(m_rows.integer(idField));
        const qsizetype before = m_places.size();
        m_places.insert(place);
        if (m_places.size() == before)
            addWithStudent(m_twice, u"id"_s, id.text());
    }

    void lookAtScores()
    {
        if (m_rows.readNumbers(firstScore, m_scores))
            lookForTexts();
        for (size_t i = 0; i < m_scores.size(); ++i) {
            const double score = m_scores[i];
            const double mark = m_current->marks.empty() ? 0 : m_current->marks[i];
            constexpr double absent = -1;
            if (score < 0 && score != absent)
                addScore(m_below, i);
            else if (mark > 0 && isAbove(score, mark))
                addScore(m_above, i);
        }
    }

    void lookForTexts()
    {
        for (int i = 0; i < int(m_scores.size()); ++i) {
            const runtime::Value value = m_rows.value(firstScore + i);
            if (!value.isNull() && !value.isNumber())
                addWithStudent(m_noNumber, m_exams.columns()[i], value.text());
        }
    }

    void addScore(FaultKind& kind, size_t column)
    {
        addWithStudent(kind, m_exams.columns()[qsizetype(column)],
                       runtime::singleText(float(m_scores[column])));
    }

    void addWithStudent(FaultKind& kind, const QString& column, const QString& value)
    {
        if (!kind.isListed())
            return kind.add(m_row, column);
        m_student.bind({m_rows.value(rowIdField)});
        m_student.step();
        kind.add(m_row, column, u"%1（%2，%3）"_s.arg(value, m_exam, studentText(m_student, 0)));
        m_student.finish();
    }

    void tellUnknownExams()
    {
        for (qsizetype i = 0; i < m_names.size(); ++i) {
            if (!m_exams.knows(m_names[i]))
                m_unknownExam.add(
                    0, u"考试名称"_s,
                    u"%1（%2 行）"_s.arg(m_names[i], QString::number(m_rowCounts[size_t(i)])));
        }
    }

    const ListedExams& m_exams;
    const QSet<qint64>& m_students;
    database::Statement m_rows;
    database::Statement m_student;
    qint64 m_row = 0;
    std::vector<double> m_scores;

    QHash<ExamKey, MetExam> m_met;
    QHash<QString, int> m_numbers;
    /// By the exams' numbers.
    QStringList m_names;
    std::vector<qint64> m_rowCounts;
    /// Number of the exam and ID of the student, in 32 bits each.
    QSet<quint64> m_places;
    /// The exam of the row, also as it is stored.
    QByteArray m_examBytes;
    QByteArray m_streamBytes;
    QString m_exam;
    QString m_stream;
    std::optional<MetExam> m_current;

    FaultKind m_unknownExam{scoreTable, u"考试名称表里没有这次考试，程序里看不到；原样转入。"_s};
    FaultKind m_noId{scoreTable, u"没有学生的 ID，个人分析里看不到；原样转入。"_s};
    FaultKind m_nobody{scoreTable, u"信息表里没有这个 ID 的学生；原样转入。"_s};
    FaultKind m_twice{scoreTable, u"这个学生这次考试前面已有一行成绩；原样转入。"_s};
    FaultKind m_text{scoreTable, u"不是数值，原样转入；程序按数值找班级。"_s};
    FaultKind m_noNumber{scoreTable, u"分数不是数值；原样转入。"_s};
    FaultKind m_below{scoreTable, u"分数小于 0，又不是表示缺考的 -1；原样转入。"_s};
    FaultKind m_above{scoreTable, u"分数高于满分；原样转入。"_s};
};

} // namespace

QSet<ExamKey> findScoreFaults(database::Connection& library, const ListedExams& exams,
                              const QSet<qint64>& students, std::vector<Finding>& findings)
{
    ScorePass pass(library, exams, students);
    pass.run();
    pass.tell(findings);
    return pass.taken();
}

} // namespace oldlibraries
