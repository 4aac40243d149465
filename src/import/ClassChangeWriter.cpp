#include "import/ClassChangeWriter.h"

#include "platform/database/Recordset.h"

namespace importing {

using namespace Qt::StringLiterals;
using Effect = ClassChange::Effect;

ClassChangeWriter::ClassChangeWriter(database::Connection& connection, const runtime::Trap& trap)
    : m_connection(connection),
      m_trap(trap),
      m_place(connection.prepared(u"update 信息表 set 班级=?, 学号=? where ID=?"_s)),
      m_mark(connection.prepared(u"update 分班表 set 已分班=? where ID=?"_s)),
      m_removal(connection.prepared(u"delete from 信息表 where ID=?"_s)),
      m_scoreRemoval(connection.prepared(u"delete from 成绩表 where 班级=? and 学号=?"_s))
{
}

void ClassChangeWriter::write(const ClassChange& student)
{
    if (student.effect == Effect::Move)
        move(student);
    else if (student.effect == Effect::Rename)
        rename(student);
    else if (student.effect == Effect::Remove)
        remove(student);
}

void ClassChangeWriter::move(const ClassChange& student)
{
    m_trap([&] {
        m_place.bind({student.newClass, student.newNumber, student.id});
        m_moved += m_place.run();
    });
    m_trap([&] {
        m_mark.bind({student.id, student.row});
        m_mark.run();
    });
}

/// Through the field, which takes any letter and refuses what does not fit.
void ClassChangeWriter::rename(const ClassChange& student)
{
    m_trap([&] {
        database::Recordset rows;
        rows.Open(u"select * from 信息表 where ID=?"_s, {student.id}, m_connection);
        rows.Fields(u"姓名"_s).setValue(student.newName);
        rows.Update();
        ++m_renamed;
    });
}

void ClassChangeWriter::remove(const ClassChange& student)
{
    m_trap([&] {
        m_removal.bind({student.id});
        m_removed += m_removal.run();
    });
    m_trap([&] {
        m_scoreRemoval.bind({student.classNumber, student.number});
        m_removedScores += m_scoreRemoval.run();
    });
}

} // namespace importing
