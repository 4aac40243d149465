#include "import/ClassAnswers.h"

#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;

void ClassAnswers::forget()
{
    m_categories.clear();
    m_streams.clear();
}

void ClassAnswers::giveStream(const std::vector<double>& classes, const QString& stream)
{
    m_given.clear();
    for (const double classNumber : classes)
        m_given.emplace(classNumber, stream);
}

bool ClassAnswers::hasStream(double classNumber)
{
    return m_given.contains(classNumber) || hasStudents(classNumber);
}

bool ClassAnswers::hasStudents(double classNumber)
{
    if (m_streams.contains(classNumber) || m_categories.contains(classNumber))
        return true;
    return hasStudentsOf(classNumber);
}

bool ClassAnswers::hasStudentsOf(const runtime::Value& classCell)
{
    database::Statement& student =
        m_library.Conn.prepared(u"select ID from 信息表 where 班级=? limit 1"_s);
    student.bind({classCell});
    const bool found = student.step();
    student.reset();
    return found;
}

runtime::Value ClassAnswers::GetLeiBie(double classNumber)
{
    const auto known = m_categories.find(classNumber);
    if (known != m_categories.end())
        return known->second;
    runtime::Value category = m_library.students.GetLeiBie(classNumber);
    if (hasStudents(classNumber))
        m_categories.emplace(classNumber, category);
    return category;
}

bool ClassAnswers::knowsStreamOf(const runtime::Value& classCell)
{
    return m_given.contains(runtime::Val(classCell)) || hasStudentsOf(classCell);
}

runtime::Value ClassAnswers::streamOf(const runtime::Value& classCell)
{
    const double classNumber = runtime::Val(classCell);
    return m_given.contains(classNumber) ? GetBJKL(classNumber)
                                         : m_library.students.GetBJKL(classCell);
}

runtime::Value ClassAnswers::GetBJKL(double classNumber)
{
    const auto known = m_streams.find(classNumber);
    if (known != m_streams.end())
        return known->second;
    const auto given = m_given.find(classNumber);
    if (given != m_given.end() && !hasStudents(classNumber))
        return given->second;
    runtime::Value stream = m_library.students.GetBJKL(classNumber);
    if (hasStudents(classNumber))
        m_streams.emplace(classNumber, stream);
    return stream;
}

} // namespace importing
