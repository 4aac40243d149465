#include "import/tidy/Roster.h"

#include <algorithm>

#include "library/ColumnNames.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/TextFile.h"

namespace tidy {

using namespace Qt::StringLiterals;
using database::SqlPiece;
using database::Statement;

namespace {

/// A number that names a student, as it is compared: zeros at the head are lost where a
/// spreadsheet took it for a number.
QString keyOf(const QString& number)
{
    QString key = folded(number);
    qsizetype zeros = 0;
    while (zeros + 1 < key.size() && key[zeros] == u'0')
        ++zeros;
    return key.mid(zeros);
}

QString nameKey(const QString& name)
{
    return withoutBlanks(name).toCaseFolded();
}

/// The column of 信息表 that stands for a field under one of its names; 姓名 where it has none,
/// whose content then is not taken.
QString columnFor(const QString& field, const Aliases& aliases, const QStringList& columns)
{
    const QStringList names = aliases.namesOf(field);
    for (const QString& name : names) {
        if (columns.contains(name, Qt::CaseInsensitive))
            return name;
    }
    return {};
}

QStringList studentTableColumns(database::Connection& connection)
{
    const Statement none(connection, u"select * from 信息表 where 0"_s);
    QStringList names;
    for (int column = 0; column < none.columnCount(); ++column)
        names.append(none.columnName(column));
    return names;
}

std::vector<RosterStudent> studentsOf(database::Connection& connection, const Aliases& aliases)
{
    const QStringList columns = studentTableColumns(connection);
    const QString examNumber = columnFor(u"考号"_s, aliases, columns);
    const QString schoolNumber = columnFor(u"学籍号"_s, aliases, columns);
    const auto piece = [](const QString& column) {
        return SqlPiece::name(column.isEmpty() ? u"姓名"_s : column);
    };
    Statement rows(connection,
                   database::sqlWith(u"select 班级, 学号, 姓名, 科类, %1, %2 from 信息表 "
                                     "order by rowid"_s,
                                     {piece(examNumber), piece(schoolNumber)}));
    std::vector<RosterStudent> students;
    while (rows.step()) {
        const runtime::Value classNumber = rows.value(0);
        const runtime::Value number = rows.value(1);
        if (!classNumber.isNumber() || !number.isNumber())
            continue;
        students.push_back({runtime::Val(classNumber), runtime::Val(number), rows.text(2),
                            rows.text(3), examNumber.isEmpty() ? QString() : rows.text(4),
                            schoolNumber.isEmpty() ? QString() : rows.text(5)});
    }
    return students;
}

} // namespace

Roster Roster::ofLibrary(library::ScoreLibrary& scores, const Aliases& aliases)
{
    const database::ReadBatch batch(scores.Conn);
    return Roster(scores.catalogue.SubjectColumns, studentsOf(scores.Conn, aliases));
}

Roster Roster::ofShippedSubjects(const runtime::AppPaths& paths)
{
    QStringList subjects;
    runtime::readLines(paths.dataFile(u"科目.txt"_s), subjects);
    subjects.removeIf([](const QString& name) { return library::isTotal(name); });
    return Roster(subjects, {});
}

Roster::Roster(QStringList subjects, std::vector<RosterStudent> students)
    : m_subjects(std::move(subjects)), m_students(std::move(students))
{
    index();
}

const QStringList& Roster::studentColumns()
{
    static const QStringList columns{u"类别代码"_s, u"类别"_s,     u"性别"_s,   u"照片名"_s,
                                     u"出生时间"_s, u"入学时间"_s, u"学籍号"_s, u"原毕业学校"_s,
                                     u"身份证"_s,   u"民族"_s,     u"籍贯"_s,   u"备注"_s};
    return columns;
}

void Roster::index()
{
    // From the back, since QMultiHash gives what came last first.
    for (int place = int(m_students.size()) - 1; place >= 0; --place) {
        const RosterStudent& student = m_students[size_t(place)];
        m_byClass.insert(student.classNumber, place);
        m_byNumber.insert({student.classNumber, student.number}, place);
        m_byName.insert(nameKey(student.name), place);
        if (!student.examNumber.isEmpty())
            m_byExamNumber.insert(keyOf(student.examNumber), place);
        if (!student.schoolNumber.isEmpty())
            m_bySchoolNumber.insert(keyOf(student.schoolNumber), place);
    }
}

std::vector<double> Roster::classes() const
{
    std::vector<double> all(m_byClass.keyBegin(), m_byClass.keyEnd());
    std::sort(all.begin(), all.end());
    return all;
}

QString Roster::streamOf(double classNumber) const
{
    const auto found = m_byClass.constFind(classNumber);
    return found == m_byClass.constEnd() ? QString() : m_students[size_t(*found)].stream;
}

template <class Key>
Roster::Found Roster::found(const QMultiHash<Key, int>& index, const Key& key) const
{
    Found students;
    for (auto place = index.constFind(key); place != index.constEnd() && place.key() == key;
         ++place)
        students.push_back(&m_students[size_t(place.value())]);
    return students;
}

Roster::Found Roster::at(double classNumber, double number) const
{
    return found(m_byNumber, {classNumber, number});
}

Roster::Found Roster::named(const QString& name) const
{
    return found(m_byName, nameKey(name));
}

Roster::Found Roster::named(double classNumber, const QString& name) const
{
    Found students = named(name);
    std::erase_if(students, [&](const RosterStudent* student) {
        return student->classNumber != classNumber;
    });
    return students;
}

Roster::Found Roster::withExamNumber(const QString& number) const
{
    return found(m_byExamNumber, keyOf(number));
}

Roster::Found Roster::withSchoolNumber(const QString& number) const
{
    return found(m_bySchoolNumber, keyOf(number));
}

} // namespace tidy
