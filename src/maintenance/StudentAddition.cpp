#include "maintenance/StudentAddition.h"

#include <algorithm>

#include "library/ExamName.h"
#include "library/Students.h"
#include "library/TextLength.h"
#include "maintenance/QuotedText.h"
#include "maintenance/Refusal.h"
#include "maintenance/TypedNumber.h"
#include "platform/database/ColumnDeclaration.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Val;

namespace {

const Trap additionTrap{" - Sub AddStudent/StudentAddition"};

constexpr qsizetype mostStreams = 2;

const QStringList& columnsOfOthers()
{
    static const QStringList columns{u"ID"_s,   u"班级"_s,     u"学号"_s,   u"姓名"_s,
                                     u"科类"_s, u"类别代码"_s, u"照片名"_s, u"照片"_s};
    return columns;
}

QString numberFault(const QString& text, const QString& what)
{
    if (text.trimmed().isEmpty())
        return u"请输入%1。"_s.arg(what);
    return typedWholeNumber(text)
               ? QString()
               : u"%1“%2”不是大于 0、最多 15 位的整数。"_s.arg(what, text.left(30));
}

QString nameFault(const QString& name)
{
    if (name.isEmpty())
        return u"请输入姓名。"_s;
    if (name.size() > library::LongestText)
        return u"姓名最多 %1 个字，现在有 %2 个字。"_s.arg(library::LongestText).arg(name.size());
    return std::any_of(name.begin(), name.end(), library::isControlLetter)
               ? u"姓名里不能有换行、制表符等控制字符。"_s
               : QString();
}

/// "1 班 3 号".
QString place(const NewStudent& student)
{
    return u"%1 班 %2 号"_s.arg(
        runtime::doubleText(typedWholeNumber(student.classNumber).value_or(0)),
        runtime::doubleText(typedWholeNumber(student.number).value_or(0)));
}

bool agreesToName(const QString& name, const QString& classNumber, const QStringList& numbers)
{
    return runtime::choose(
               {.text =
                    u"%1 班已经有叫“%2”的学生（%3 号）。\n是另一个同名的学生，才需要添加。"_s.arg(
                        classNumber, name, numbers.join(u'、')),
                .buttons = {u"仍然添加"_s, u"取消"_s},
                .safe = 1,
                .title = u"提示"_s})
           == 0;
}

} // namespace

QStringList ClassRoster::namesOf(double number) const
{
    QStringList names;
    for (const Student& student : students) {
        if (student.number == number)
            names.append(shownName(student.name));
    }
    return names;
}

std::vector<double> StudentAddition::classes() const
{
    std::vector<double> found;
    additionTrap([&] {
        const database::ReadBatch reading(m_library.Conn);
        database::Recordset rows;
        rows.Open(u"select distinct 班级 from 信息表 order by 班级"_s, m_library.Conn);
        for (; !rows.Eof(); rows.MoveNext())
            found.push_back(Val(rows.Fields(0).Value()));
    });
    return found;
}

QStringList StudentAddition::streams() const
{
    QStringList offered = m_library.catalogue.Streams;
    for (const QString& stream : {u"理"_s, u"文"_s}) {
        if (offered.size() < mostStreams && !offered.contains(stream))
            offered.append(stream);
    }
    offered.removeAll(QString());
    return offered;
}

QStringList StudentAddition::details() const
{
    QStringList columns;
    additionTrap([&] {
        for (const QString& column : database::columnNames(m_library.Conn, u"信息表"_s)) {
            if (!columnsOfOthers().contains(column, Qt::CaseInsensitive))
                columns.append(column);
        }
    });
    return columns;
}

std::optional<ClassRoster> StudentAddition::roster(const QString& classNumber) const
{
    const std::optional<double> number = typedWholeNumber(classNumber);
    ClassRoster found;
    const bool isRead = !number || additionTrap([&] {
        const runtime::Phase phase;
        const database::ReadBatch reading(m_library.Conn);
        found = readRoster(*number);
        const double highest = found.isNew() ? 0 : found.students.back().number;
        found.freeNumber = library::freeNumber(m_library.Conn, *number, highest);
    });
    return isRead ? std::optional(found) : std::nullopt;
}

ClassRoster StudentAddition::readRoster(double classNumber) const
{
    ClassRoster found;
    database::Recordset rows;
    rows.Open(u"select ID, 学号, 姓名, 科类, 类别代码 from 信息表 where 班级=? order by rowid"_s,
              {classNumber}, m_library.Conn);
    for (; !rows.Eof(); rows.MoveNext()) {
        if (found.isNew()) {
            found.stream = rows.Fields(3).Value().text();
            found.category = rows.Fields(4).Value();
        }
        found.students.push_back({qint64(rows.Fields(0).Value().toDouble()),
                                  Val(rows.Fields(1).Value()), rows.Fields(2).Value().text()});
    }
    std::ranges::stable_sort(found.students, {}, &ClassRoster::Student::number);
    return found;
}

std::optional<qint64> StudentAddition::add(const NewStudent& student)
{
    if (!mayAdd(student))
        return {};
    std::optional<qint64> id;
    unlessRefused(additionTrap, [&] { id = write(student); });
    if (!id)
        return {};
    additionTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    return id;
}

/// What is wrong has been told then, and what is doubtful answered.
bool StudentAddition::mayAdd(const NewStudent& student) const
{
    const std::optional<ClassRoster> found = roster(student.classNumber);
    QString fault;
    if (!found || !additionTrap([&] { fault = faultOf(student, *found); }))
        return false;
    if (!fault.isEmpty()) {
        runtime::warn(fault);
        return false;
    }
    QStringList numbers;
    for (const ClassRoster::Student& other : found->students) {
        if (other.name == student.name.trimmed())
            numbers.append(runtime::doubleText(other.number));
    }
    return numbers.isEmpty()
           || agreesToName(student.name.trimmed(), student.classNumber.trimmed(), numbers);
}

/// "" if the student can be added to the class.
QString StudentAddition::faultOf(const NewStudent& student, const ClassRoster& roster) const
{
    for (const QString& fault :
         {numberFault(student.classNumber, u"班级"_s), numberFault(student.number, u"学号"_s),
          nameFault(student.name.trimmed())}) {
        if (!fault.isEmpty())
            return fault;
    }
    const QStringList others = roster.namesOf(*typedWholeNumber(student.number));
    if (!others.isEmpty())
        return u"%1已经是%2了，请换一个学号。"_s.arg(place(student), others.join(u'、'));
    if (!roster.isNew())
        return {};
    const QString fault = streamFault(student.stream);
    return fault.isEmpty() && !student.category.trimmed().isEmpty()
               ? numberFault(student.category, u"类别代码"_s)
               : fault;
}

/// Why a new class cannot have the stream; "" if it can.
QString StudentAddition::streamFault(const QString& stream) const
{
    if (stream.isEmpty())
        return u"这是新的班级，请选择它的科类。"_s;
    database::Recordset rows;
    rows.Open(u"select distinct 科类 from 信息表"_s, m_library.Conn);
    QStringList there;
    for (; !rows.Eof(); rows.MoveNext())
        there.append(rows.Fields(0).Value().text());
    if (there.contains(stream) || there.size() < mostStreams)
        return {};
    return u"成绩库里已有科类“%1”，最多两个，新的班级不能是“%2”。"_s.arg(there.join(u"”、“"_s),
                                                                         stream);
}

/// Another program may have written since the questions.
qint64 StudentAddition::write(const NewStudent& student) const
{
    database::WriteBatch batch(m_library.Conn);
    const double classNumber = *typedWholeNumber(student.classNumber);
    const ClassRoster found = readRoster(classNumber);
    const QString fault = faultOf(student, found);
    if (!fault.isEmpty())
        throw Refusal(fault);
    database::Recordset rows;
    rows.Open(u"select * from 信息表"_s, m_library.Conn);
    rows.AddNew();
    rows.Fields(u"班级"_s).setValue(classNumber);
    rows.Fields(u"学号"_s).setValue(*typedWholeNumber(student.number));
    rows.Fields(u"姓名"_s).setValue(student.name.trimmed());
    rows.Fields(u"科类"_s).setValue(found.isNew() ? student.stream : found.stream);
    const std::optional<double> typed = typedWholeNumber(student.category);
    if (found.isNew() && typed)
        rows.Fields(u"类别代码"_s).setValue(*typed);
    else if (!found.category.isNull())
        rows.Fields(u"类别代码"_s).setValue(found.category);
    for (const auto& [column, text] : student.details) {
        if (!text.isEmpty())
            rows.Fields(column).setValue(text);
    }
    rows.Update();
    const qint64 id = rows.lastInsertId();
    batch.commit();
    return id;
}

} // namespace maintenance
