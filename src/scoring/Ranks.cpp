#include "scoring/Ranks.h"

#include <numeric>

#include "library/ColumnNames.h"
#include "platform/database/Error.h"
#include "platform/database/Recordset.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"
#include "scoring/RowOrder.h"

namespace scoring {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap rankTrap{" - Sub PaiMC/Mdl_MDB"};

/// Competition ranks (1, 2, 2, 4) of one group whose values come in descending order.
class RankRule
{
public:
    qint64 next(double value)
    {
        ++m_position;
        if (m_position == 1 || value < m_last) {
            m_rank = m_position;
            m_last = value;
        }
        return m_rank;
    }

    /// A NULL, behind which no value comes, takes the rank in force.
    qint64 nextNull() const { return m_rank; }

    qint64 next(const TableColumn& column, size_t row)
    {
        return column.isNull(row) ? nextNull() : next(column.value(row));
    }

private:
    qint64 m_position = 0;
    qint64 m_rank = 1;
    double m_last = 0;
};

/// A negative score is an absence: it stands in the rank column itself. The order puts it behind
/// all scores, so that it takes no place from anybody.
void storeRank(TableColumn& ranks, const TableColumn& scores, size_t row, RankRule& rule)
{
    if (scores.absent(row))
        ranks.set(row, scores.value(row));
    else
        ranks.set(row, double(rule.next(scores, row)));
}

void failEachRow(const QString& name, size_t rows)
{
    for (size_t row = 0; row < rows; ++row)
        rankTrap.fail(database::noSuchColumn(name));
}

/// Whether the grade is ranked beside the classes.
enum class Grade { Ranked, LeftAlone };

/// What is ranked of a stream: the grade, classes, or both.
struct Groups
{
    Grade grade;
    /// Position of each row's class among the ranked ones; -1 for a class that is not ranked.
    std::vector<int> classOfRow;
    size_t classCount;
};

Groups groupsOf(const ExamTable& table, Grade grade, const std::vector<double>& classes)
{
    Groups groups{grade, {}, classes.size()};
    for (const double number : table.classes()) {
        const auto found = std::find(classes.begin(), classes.end(), number);
        groups.classOfRow.push_back(found == classes.end() ? -1 : int(found - classes.begin()));
    }
    return groups;
}

size_t rowsInClasses(const Groups& groups)
{
    return size_t(std::count_if(groups.classOfRow.begin(), groups.classOfRow.end(),
                                [](int position) { return position >= 0; }));
}

void rankGrade(ExamTable& table, const TableColumn& scores, const std::vector<size_t>& order,
               const QString& rankName)
{
    TableColumn* ranks = table.resultColumn(rankName);
    if (!ranks)
        return failEachRow(rankName, table.rowCount());
    RankRule rule;
    for (const size_t row : order)
        storeRank(*ranks, scores, row, rule);
}

void rankClasses(ExamTable& table, const TableColumn& scores, const std::vector<size_t>& order,
                 const Groups& groups, const QString& rankName)
{
    TableColumn* ranks = table.resultColumn(rankName);
    if (!ranks)
        return failEachRow(rankName, rowsInClasses(groups));
    std::vector<RankRule> rules(groups.classCount);
    for (const size_t row : order) {
        const int group = groups.classOfRow[row];
        if (group >= 0)
            storeRank(*ranks, scores, row, rules[size_t(group)]);
    }
}

/// Grade ranks of a total by its T score; here every row has a rank, absent or not.
void rankByT(ExamTable& table, const QString& total)
{
    const QString name = library::tScoreColumn(total);
    const TableColumn* scores = table.column(name);
    if (!scores)
        return rankTrap.fail(database::noSuchColumn(name));
    const QString rankName = library::tRankColumn(total);
    TableColumn* ranks = table.resultColumn(rankName);
    if (!ranks)
        return failEachRow(rankName, table.rowCount());
    RankRule rule;
    for (const size_t row : descendingRows(*scores, table.rowCount()))
        ranks->set(row, double(rule.next(*scores, row)));
}

void rankByScore(ExamTable& table, const QString& name, const Groups& groups)
{
    const TableColumn* scores = table.column(name);
    if (!scores)
        return rankTrap.fail(database::noSuchColumn(name));
    const std::vector<size_t> order = descendingRows(*scores, table.rowCount());
    if (groups.grade == Grade::Ranked)
        rankGrade(table, *scores, order, library::gradeRankColumn(name));
    if (groups.classCount > 0)
        rankClasses(table, *scores, order, groups, library::classRankColumn(name));
}

void rankColumn(ExamTable& table, const QString& name, const Groups& groups)
{
    rankByScore(table, name, groups);
    if (groups.grade == Grade::Ranked && library::isTotal(name))
        rankByT(table, name);
}

/// False, after a message, if the stream's scores could not be read.
bool rankStream(library::ScoreLibrary& scoreLibrary, ExamTables& tables, const QString& stream,
                Grade grade, const std::vector<double>& classes)
{
    return rankTrap([&] {
        const QStringList columns = scoreLibrary.catalogue.GetKSKMZF(tables.exam(), stream).names;
        ExamTable& table = tables.of(stream);
        if (table.rowCount() == 0)
            return;
        const Groups groups = groupsOf(table, grade, classes);
        for (const QString& name : columns)
            rankColumn(table, name, groups);
    });
}

std::vector<double> classesOf(database::Connection& conn, const QString& stream)
{
    std::vector<double> classes;
    database::Recordset rows;
    rows.Open(u"select distinct 班级  from 信息表 where 科类=?"_s, {stream}, conn);
    for (; !rows.Eof(); rows.MoveNext()) {
        const double number = rows.Fields(0).Value().toDouble();
        // Class 0 would mean the grade.
        if (number > 0)
            classes.push_back(number);
    }
    return classes;
}

} // namespace

bool computeRanks(library::ScoreLibrary& scoreLibrary, ExamTables& tables)
{
    const Trap all{" - Sub PanNJBjMC/Mdl_MDB"};
    database::Recordset streams;
    streams.Open(u"select distinct 科类 from 信息表"_s, scoreLibrary.Conn);
    bool complete = true;
    for (; !streams.Eof(); streams.MoveNext()) {
        const QString stream = streams.Fields(0).Value().text();
        std::vector<double> classes;
        all([&] { classes = classesOf(scoreLibrary.Conn, stream); });
        complete = rankStream(scoreLibrary, tables, stream, Grade::Ranked, classes) && complete;
    }
    return complete;
}

void computeGroupRanks(library::ScoreLibrary& scoreLibrary, ExamTables& tables,
                       const QString& stream, double classNumber)
{
    if (classNumber == 0)
        rankStream(scoreLibrary, tables, stream, Grade::Ranked, {});
    else
        rankStream(scoreLibrary, tables, stream, Grade::LeftAlone, {classNumber});
}

void MyPaiXU(QStringList& values)
{
    std::vector<double> numbers;
    for (const QString& value : std::as_const(values))
        numbers.push_back(runtime::Val(value));
    std::vector<qsizetype> order(numbers.size());
    std::iota(order.begin(), order.end(), qsizetype(0));
    const auto isAhead = [&](qsizetype a, qsizetype b) {
        return numbers[size_t(a)] > numbers[size_t(b)];
    };
    std::sort(order.begin(), order.end(), isAhead);
    RankRule rule;
    for (const qsizetype place : order) {
        const qint64 rank = rule.next(numbers[size_t(place)]);
        if (!values[place].isEmpty())
            values[place] = QString::number(rank);
    }
}

} // namespace scoring
