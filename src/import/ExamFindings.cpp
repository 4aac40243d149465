#include "import/ExamFindings.h"

#include <set>

#include "library/ExamName.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/Recordset.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Phase.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Val;

namespace {

using Number = std::pair<double, double>;

/// Reads what a question tells, from one state of the file.
template <class Reading> void read(database::Connection& connection, Reading&& reading)
{
    const runtime::Phase phase;
    const database::ReadBatch state(connection);
    reading();
}

} // namespace

QString namedStream(const QString& stream)
{
    return stream.isEmpty() ? u"没有科类"_s : u"“%1”科"_s.arg(stream);
}

RowName rowNameOf(const KnownStudents::Student* known, const QString& sheetName)
{
    const bool mayBeRenamed = known != nullptr && !known->otherName(sheetName).isEmpty();
    return mayBeRenamed ? RowName::Any : RowName::OnTheSheet;
}

/// The first values of the rows of a statement, none twice.
QStringList ExamFindings::namesOf(const QString& sql) const
{
    QStringList names;
    read(m_library.Conn, [&] {
        database::Recordset rows;
        for (rows.Open(sql, m_library.Conn); !rows.Eof(); rows.MoveNext())
            names.append(rows.Fields(0).Value().text());
    });
    names.removeDuplicates();
    return names;
}

QString ExamFindings::nameFault(const QString& exam) const
{
    return library::examNameFault(exam, namesOf(u"select 考试名称 from 考试名称表"_s));
}

QString ExamFindings::whyUnlisted(const QString& exam) const
{
    // The list asks whether a name stands anywhere in those before it, and a new exam comes last.
    const QStringList known = namesOf(u"select 考试名称 from 考试名称表 order by 考试编号"_s);
    QString seen;
    QString hiding;
    for (const QString& other : known) {
        if (seen.contains(other) && !seen.isEmpty())
            continue;
        if (other == exam)
            return {};
        seen += other + u',';
        if (hiding.isEmpty() && other.contains(exam))
            hiding = other;
    }
    if (!seen.contains(exam))
        return {};
    const QString where = hiding.isEmpty() ? u"已有的考试名称连起来含有“%1”"_s.arg(exam)
                                           : u"“%1”是已有考试“%2”的一部分"_s.arg(exam, hiding);
    return where
           + u"，导入以后考试列表里看不到它，也就不能浏览和统计。\n"
             "请换一个不被别的考试名称包含的名称。"_s;
}

std::vector<double> ExamFindings::classesWithoutStudents(const SheetRows& rows) const
{
    std::vector<double> empty;
    read(m_library.Conn, [&] {
        for (const double classNumber : rows.classes()) {
            if (!m_classes.hasStudents(classNumber))
                empty.push_back(classNumber);
        }
    });
    return empty;
}

QStringList ExamFindings::streams() const
{
    QStringList found = namesOf(u"select distinct 科类 from 信息表"_s);
    found.removeAll(QString());
    return found;
}

QString ExamFindings::streamOfNewClasses(const QString& chosen) const
{
    const QStringList known = streams();
    return known.size() == 1 ? known[0] : chosen;
}

std::vector<int> ExamFindings::repeatedRows(const SheetRows& rows, const QString& exam) const
{
    std::vector<int> repeated;
    read(m_library.Conn, [&] {
        std::set<Number> present;
        database::Statement& scores =
            m_library.Conn.prepared(u"select 班级, 学号 from 成绩表 where 考试名称=?"_s);
        scores.bind({exam});
        while (scores.step())
            present.emplace(Val(scores.value(0)), Val(scores.value(1)));
        if (present.empty())
            return;
        int row = SheetRows::First;
        for (const SheetStudent& student : rows.students()) {
            // Each student counts once.
            if (present.erase({student.classNumber, student.number}) > 0)
                repeated.push_back(row);
            ++row;
        }
    });
    return repeated;
}

std::vector<ExamFindings::Overwritten> ExamFindings::overwrittenRows(const SheetRows& rows,
                                                                     const QString& exam) const
{
    std::vector<Overwritten> found;
    read(m_library.Conn, [&] {
        std::set<Number> counted;
        int row = SheetRows::First - 1;
        for (const SheetStudent& student : rows.students()) {
            ++row;
            const KnownStudents::Student* known =
                m_students.find(student.classNumber, student.number);
            const std::optional<FirstRow> first = firstRowOf(
                m_library.Conn, exam, {student.classNumber, student.number, student.name},
                rowNameOf(known, student.name));
            if (first && !first->isOfThisExam
                && counted.emplace(student.classNumber, student.number).second)
                found.push_back({row, first->exam.isEmpty() ? u"没有名称的考试"_s : first->exam});
        }
    });
    return found;
}

QString ExamFindings::wrongExamRow(const QString& exam, const QString& stream) const
{
    QString sentence;
    read(m_library.Conn, [&] {
        database::Statement& firstRow = m_library.Conn.prepared(
            u"select 科类 from 考试名称表 where 考试名称=? order by 考试编号, rowid limit 1"_s);
        firstRow.bind({exam});
        if (firstRow.step() && firstRow.text(0) != stream)
            sentence = u"满分和总分公式会写到%1的考试行，不是%2的。"_s.arg(
                namedStream(firstRow.text(0)), namedStream(stream));
        firstRow.finish();
    });
    return sentence;
}

} // namespace importing
