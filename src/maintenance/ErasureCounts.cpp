#include "maintenance/ErasureCounts.h"

#include <algorithm>
#include <map>
#include <numeric>

#include <QSet>

#include "library/Settings.h"
#include "maintenance/QuotedText.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"

namespace maintenance {

using namespace Qt::StringLiterals;

namespace {

/// Lines of the question, which has to fit the screen.
constexpr size_t mostLines = 12;

qint64 countOf(database::Connection& connection, const QString& sql, const QString& exam)
{
    database::Statement& rows = connection.prepared(sql);
    rows.bind({exam});
    rows.step();
    const qint64 count = rows.integer(0);
    rows.finish();
    return count;
}

/// The rows of an exam, stream by stream.
class StreamCount
{
public:
    explicit StreamCount(const QString& exam) : m_exam(exam) {}

    void addStream(const QString& stream) { of(stream); }

    /// A row of the stream, its student's ID and the scores behind it.
    void add(database::Statement& row, int firstScore)
    {
        Stream& stream = of(row.text(0));
        ++stream.found.rows;
        qint64 scores = 0;
        for (int column = firstScore; column < row.columnCount(); ++column) {
            const bool isAbsence = row.number(column) < 0;
            stream.found.absences += isAbsence;
            scores += !isAbsence && !row.isNull(column);
        }
        stream.found.scores += scores;
        if (scores > 0)
            addStudent(stream, row.integer(1));
    }

    std::vector<StreamOfExam> streams() const
    {
        std::vector<StreamOfExam> all;
        for (const auto& [name, stream] : m_streams)
            all.push_back(stream.found);
        return all;
    }

private:
    struct Stream
    {
        StreamOfExam found;
        QSet<qint64> students;
    };

    Stream& of(const QString& name)
    {
        const auto [place, isNew] = m_streams.try_emplace(name);
        if (isNew)
            place->second.found = {.exam = m_exam, .stream = name};
        return place->second;
    }

    /// A row without an ID is a student of its own.
    static void addStudent(Stream& stream, qint64 id)
    {
        const qsizetype known = stream.students.size();
        if (id != 0)
            stream.students.insert(id);
        stream.found.students += id == 0 || stream.students.size() > known ? 1 : 0;
    }

    QString m_exam;
    std::map<QString, Stream> m_streams;
};

std::vector<StreamOfExam> streamsOf(library::ScoreLibrary& scoreLibrary, const QString& exam)
{
    StreamCount count(exam);
    database::Statement& streams = scoreLibrary.Conn.prepared(
        u"select 科类 from 考试名称表 where 考试名称=?1 and 考试名称=?1 collate binary"_s);
    streams.bind({exam});
    while (streams.step())
        count.addStream(streams.text(0));
    const QStringList subjects =
        scoreLibrary.settings.scoreColumns(scoreLibrary.catalogue.SubjectColumns);
    database::Statement& rows = scoreLibrary.Conn.prepared(database::sqlWith(
        u"select 科类, id%1 from 成绩表 where 考试名称=?1 and 考试名称=?1 collate "
        "binary"_s,
        {database::SqlPiece::moreNames(subjects)}));
    rows.bind({exam});
    constexpr int firstScore = 2;
    while (rows.step())
        count.add(rows, firstScore);
    return count.streams();
}

QString line(const StreamOfExam& one)
{
    const QString stream = one.stream.isEmpty() ? u"没有科类"_s : one.stream;
    const QString text = u"%1（%2）：%3 人有成绩，共 %4 个成绩"_s.arg(
        shownName(one.exam), stream, QString::number(one.students), QString::number(one.scores));
    return one.absences == 0 ? text : text + u"，另有 %1 个缺考"_s.arg(one.absences);
}

} // namespace

qint64 ErasureCounts::scoreRows() const
{
    return std::accumulate(streams.begin(), streams.end(), qint64{0},
                           [](qint64 sum, const StreamOfExam& one) { return sum + one.rows; });
}

QString ErasureCounts::text() const
{
    QStringList lines;
    const size_t shown = std::min(streams.size(), mostLines);
    for (size_t i = 0; i < shown; ++i)
        lines.append(line(streams[i]));
    if (shown < streams.size())
        lines.append(u"……（连同没有列出的，一共 %1 项）"_s.arg(streams.size()));
    lines.append(u"\n一共删去：成绩表 %1 行，考试名称表 %2 行，教师名单 %3 行。"_s.arg(
        QString::number(scoreRows()), QString::number(examRows), QString::number(teacherRows)));
    if (!named.isEmpty())
        lines.append(u"分析设置“%1”里写着其中 %2 次考试，这项设置保持原样。"_s.arg(
            library::ComparedExams, QString::number(named.size())));
    return lines.join(u'\n');
}

ErasureCounts countErasure(library::ScoreLibrary& scoreLibrary, const QStringList& exams)
{
    const database::ReadBatch reading(scoreLibrary.Conn);
    ErasureCounts counts;
    const QStringList compared =
        library::examNames(scoreLibrary.settings.GetSZ(library::ComparedExams));
    const bool hasTeachers = scoreLibrary.Conn.columns(u"教师表"_s).count() > 0;
    for (const QString& exam : exams) {
        for (const StreamOfExam& one : streamsOf(scoreLibrary, exam))
            counts.streams.push_back(one);
        counts.examRows += countOf(scoreLibrary.Conn,
                                   u"select count(*) from 考试名称表 where 考试名称=?1 and "
                                   "考试名称=?1 collate binary"_s,
                                   exam);
        if (hasTeachers)
            counts.teacherRows += countOf(scoreLibrary.Conn,
                                          u"select count(*) from 教师表 where 考试名称=?1 and "
                                          "考试名称=?1 collate binary"_s,
                                          exam);
        if (compared.contains(exam))
            counts.named.append(exam);
    }
    return counts;
}

bool isExamStored(database::Connection& connection, const QString& exam)
{
    return countOf(connection,
                   u"select exists(select 1 from 考试名称表 where 考试名称=?1 collate binary) or "
                   "exists(select 1 from 成绩表 where 考试名称=?1 and 考试名称=?1 collate "
                   "binary)"_s,
                   exam)
           != 0;
}

} // namespace maintenance
