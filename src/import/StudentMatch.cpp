#include "import/StudentMatch.h"

#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::doubleText;
using runtime::Trap;
using runtime::Value;

namespace {

const Trap testTrap{" - Function TestStuName/Mdl_MDB"};

} // namespace

StudentMatch::StudentMatch(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes,
                           KnownStudents& known, IntakeBatch& batch)
    : m_library(scoreLibrary), m_classes(classes), m_known(known), m_batch(batch)
{
}

QString StudentMatch::TestStuName(double classNumber, double number, const QString& name,
                                  NewStudents newStudents)
{
    m_matchedId = 0;
    const KnownStudents::Student* known = nullptr;
    if (!testTrap([&] { known = m_known.find(classNumber, number); }))
        return {};
    if (known != nullptr) {
        m_matchedId = known->id;
        return known->otherName(name);
    }
    // No trap around the question: without a batch to go on with, the import is at its end.
    if (!mayAdd(classNumber, number, name, newStudents))
        return {};
    QString libraryName;
    testTrap([&] {
        // While the question waited, another program may have added him.
        known = m_known.find(classNumber, number);
        if (known == nullptr)
            return add(classNumber, number, name);
        m_matchedId = known->id;
        libraryName = known->otherName(name);
    });
    return libraryName;
}

Answer StudentMatch::ask(const QString& text, const QString& title, runtime::Buttons buttons)
{
    // While the question waits, others can write.
    m_known.forget();
    m_classes.forget();
    return m_batch.ask(text, title, buttons);
}

bool StudentMatch::mayAdd(double classNumber, double number, const QString& name,
                          NewStudents newStudents)
{
    if (newStudents == NewStudents::Add)
        return true;
    const QString question = u"是否添加新学生： "_s + doubleText(classNumber) + u" 班 "_s
                             + doubleText(number) + u" 号 ,"_s + name;
    return ask(question, {}, runtime::Buttons::OkCancel) == Answer::Ok;
}

void StudentMatch::add(double classNumber, double number, const QString& name)
{
    database::Recordset& rows = m_newStudents;
    if (!rows.isOpen())
        rows.Open(u"select *  from 信息表"_s, m_library.Conn);
    const auto set = [&rows](const QString& column, const Value& value) {
        testTrap([&] { rows.Fields(column).setValue(value); });
    };
    rows.AddNew();
    set(u"班级"_s, classNumber);
    set(u"学号"_s, number);
    set(u"姓名"_s, name);
    set(u"类别代码"_s, 1);
    // The first student of a class has no stream to take over; GetBJKL says so in a message.
    const bool classKnown = m_classes.hasStream(classNumber);
    const Value stream = m_classes.GetBJKL(classNumber);
    set(u"科类"_s, classKnown ? stream : Value(u""_s));
    rows.Update();
    m_matchedId = rows.lastInsertId();
    m_known.add(m_matchedId);
}

void StudentMatch::SetStuName(double classNumber, double number, const QString& name)
{
    const Trap trap{" - Sub SetStuName/Mdl_MDB"};
    m_known.forget();
    for (const QString& sql : {u"update 信息表 set 姓名=? where 班级=? and 学号=?"_s,
                               u"update 成绩表 set 姓名=? where 班级=? and 学号=?"_s}) {
        trap([&] {
            database::Recordset rows;
            rows.Open(sql, {name, classNumber, number}, m_library.Conn);
        });
    }
}

QString nameMismatchText(double classNumber, double number, const QString& sheetName,
                         const QString& libraryName)
{
    const QString student =
        doubleText(classNumber) + u"班"_s + doubleText(number) + u"号 姓名为：["_s;
    return u"Excel表格中学生的学号和姓名： ["_s + sheetName + u"] 与数据库中记录的不一致！\n\n"_s
           + u"Excel表格中："_s + student + sheetName + u"]\n"_s + u"数据库中记录："_s + student
           + libraryName + u"]，二者不一致！\n\n"_s + u"[是]用现有姓名替换掉数据库中记录的姓名\n"_s
           + u"[否]保留数据库中记录的姓名,继续录入,即将["_s + sheetName + u"]和["_s + libraryName
           + u"]认为是同一人\n"_s + u"[取消]终止当前导入\n"_s;
}

Answer StudentMatch::askNameMismatch(double classNumber, double number, const QString& sheetName,
                                     const QString& libraryName)
{
    return ask(nameMismatchText(classNumber, number, sheetName, libraryName), u"数据错误"_s,
               runtime::Buttons::YesNoCancel);
}

} // namespace importing
