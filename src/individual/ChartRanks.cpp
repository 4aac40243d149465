#include "individual/ChartRanks.h"

#include <map>
#include <optional>

#include "platform/database/ReadBatch.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Trap.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

/// The name as comparisons of the engine see it: without case of A to Z.
QString folded(const QString& exam)
{
    QString name = exam;
    for (QChar& letter : name) {
        if (letter >= u'A' && letter <= u'Z')
            letter = QChar(letter.unicode() + (u'a' - u'A'));
    }
    return name;
}

/// The student's rows as far as a chart needs them. What they cannot answer for sure, GetMC does,
/// and its failures with it.
class Ranks
{
public:
    Ranks(library::ScoreLibrary& scores, const StudentExams& student,
          const std::vector<TickedColumn>& ticked, RankKind kind);

    /// GetMC of a column that is ticked, counted from 0.
    QString rank(const QString& exam, size_t column);
    /// GetZRS of the student's stream or class.
    qint64 headCount();

private:
    void read(const QStringList& columns);

    library::ScoreLibrary& m_scores;
    const StudentExams& m_student;
    RankKind m_kind;
    QStringList m_columns;
    /// Of each exam the first row, its ranks parallel to `m_columns`.
    std::map<QString, QStringList> m_rows;
    std::optional<qint64> m_headCount;
};

Ranks::Ranks(library::ScoreLibrary& scores, const StudentExams& student,
             const std::vector<TickedColumn>& ticked, RankKind kind)
    : m_scores(scores), m_student(student), m_kind(kind)
{
    for (const TickedColumn& column : ticked)
        m_columns.append(rankColumn(column.name, kind));
    // A column that is gone, or a file that cannot be read, fails by what GetMC says.
    runtime::Trap::silent()([&] { read(m_columns); });
}

void Ranks::read(const QStringList& columns)
{
    database::Statement& rows = m_scores.Conn.prepared(
        database::sqlWith(u"select 考试名称%1 from 成绩表 where id=? order by rowid"_s,
                          {database::SqlPiece::moreNames(columns)}));
    rows.bind({m_student.StuID});
    while (rows.step()) {
        QStringList ranks;
        for (int i = 1; i < rows.columnCount(); ++i)
            ranks.append(
                rows.value(i, database::ColumnType::fromDeclaration(rows.columnDeclaration(i)))
                    .text());
        m_rows.try_emplace(folded(rows.text(0)), ranks);
    }
    rows.finish();
}

QString Ranks::rank(const QString& exam, size_t column)
{
    const auto row = m_rows.find(folded(exam));
    if (row == m_rows.end() || exam.isEmpty() || exam.contains(u'\''))
        return m_scores.students.GetMC(exam, m_columns[qsizetype(column)], m_student.StuID);
    return row->second[qsizetype(column)];
}

qint64 Ranks::headCount()
{
    const QString stream = m_student.StuKL.text();
    // A name that the statement refuses is refused at each point.
    if (!m_headCount || stream.contains(u'\''))
        m_headCount = m_scores.students.GetZRS(
            stream, m_kind == RankKind::Grade ? 0 : m_student.StuBJ.toDouble());
    return *m_headCount;
}

} // namespace

RankChartRequest readRanks(library::ScoreLibrary& scores, const StudentExams& student,
                           const std::vector<TickedColumn>& ticked, RankKind kind)
{
    const database::ReadBatch oneState(scores.Conn);
    RankChartRequest request;
    request.name = student.StuName.text();
    request.kind = kind;
    request.exams = student.exams();
    Ranks ranks(scores, student, ticked, kind);
    for (size_t column = 0; column < ticked.size(); ++column) {
        RankedColumn ranked{ticked[column].name, ticked[column].colour, {}};
        for (const QString& exam : std::as_const(request.exams)) {
            ranked.ranks.append(ranks.rank(exam, column));
            request.headCount = ranks.headCount();
        }
        request.columns.push_back(std::move(ranked));
    }
    return request;
}

} // namespace individual
