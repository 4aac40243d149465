#include "import/ScoreRows.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace importing {

using namespace Qt::StringLiterals;

namespace {

/// A class or number that is none.
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

/// Letters are compared as the library compares names: those of A to Z in either case.
bool isSameName(const QString& a, const QString& b)
{
    const auto folded = [](QChar letter) {
        return letter >= u'A' && letter <= u'Z' ? QChar(letter.unicode() + (u'a' - u'A')) : letter;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](QChar x, QChar y) { return folded(x) == folded(y); });
}

void insertSorted(std::vector<qint64>& rows, qint64 row)
{
    rows.insert(std::lower_bound(rows.begin(), rows.end(), row), row);
}

} // namespace

std::optional<FirstRow> firstRowOf(database::Connection& connection, const QString& exam,
                                   const ScoredStudent& student, RowName name)
{
    database::Statement& rows =
        connection.prepared(u"select rowid, 考试名称 from 成绩表 "
                            "where 班级=? and 学号=? and (姓名=? or ?) order by rowid limit 1"_s);
    const std::vector<runtime::Value> values{student.classNumber, student.number, student.name,
                                             name == RowName::Any ? 1 : 0};
    if (name == RowName::Written)
        rows.bindQuoted(values);
    else
        rows.bind(values);
    std::optional<FirstRow> found;
    if (rows.step())
        found = FirstRow{rows.integer(0), rows.text(1), isSameName(rows.text(1), exam)};
    rows.finish();
    return found;
}

ExamScoreRows::ExamScoreRows(database::Connection& connection, QString exam)
    : m_connection(connection), m_exam(std::move(exam))
{
}

void ExamScoreRows::read()
{
    if (m_isRead)
        return;
    database::Statement& rows =
        m_connection.prepared(u"select rowid, 班级, 学号, 姓名, id from 成绩表 where 考试名称=? "
                              "order by rowid"_s);
    rows.bind({m_exam});
    const auto number = [&](int column) {
        return rows.value(column).isNumber() ? rows.number(column) : noNumber;
    };
    while (rows.step()) {
        take(rows.integer(0), {number(1), number(2), rows.text(3), rows.integer(4)});
        if (rows.integer(4) == 0 && !rows.value(4).isNull())
            m_zeroIds.insert(rows.integer(0));
    }
    m_isRead = true;
}

void ExamScoreRows::take(qint64 row, const ScoredStudent& student)
{
    m_rows.insert(row, student);
    insertSorted(m_byId[student.id], row);
    if (!std::isnan(student.classNumber) && !std::isnan(student.number))
        insertSorted(m_byNumber[{student.classNumber, student.number}], row);
}

void ExamScoreRows::set(qint64 row, const ScoredStudent& student)
{
    read();
    if (const auto former = m_rows.constFind(row); former != m_rows.constEnd()) {
        std::erase(m_byId[former->id], row);
        std::erase(m_byNumber[{former->classNumber, former->number}], row);
    }
    m_zeroIds.remove(row);
    take(row, student);
}

qint64 ExamScoreRows::find(const ScoredStudent& student)
{
    read();
    if (student.id != 0) {
        const auto own = m_byId.constFind(student.id);
        if (own != m_byId.constEnd() && !own->empty())
            return own->front();
    }
    return findByNumber(student);
}

/// Rows without an ID come first for a student who has none.
qint64 ExamScoreRows::findByNumber(const ScoredStudent& student) const
{
    const auto rows = m_byNumber.constFind({student.classNumber, student.number});
    if (rows == m_byNumber.constEnd())
        return 0;
    qint64 found = 0;
    for (const qint64 row : *rows) {
        const ScoredStudent& owner = *m_rows.constFind(row);
        if (owner.id == 0 && student.id == 0 && !m_zeroIds.contains(row))
            return row;
        if (found == 0 && (owner.id == 0 || isSameName(owner.name, student.name)))
            found = row;
    }
    return found;
}

} // namespace importing
