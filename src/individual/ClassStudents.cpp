#include "individual/ClassStudents.h"

#include "platform/database/Statement.h"
#include "platform/runtime/FileNames.h"
#include "platform/runtime/Numbers.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

// In bytes a name may have 255, of which a Chinese character takes three and a rare one four.
constexpr int longestName = 50;

QString pictureName(double classNumber, const ClassStudent& student)
{
    return u"%1班%2号%3.png"_s.arg(runtime::doubleText(classNumber),
                                   runtime::fileNameFrom(student.number.left(longestName / 5)),
                                   runtime::fileNameFrom(student.name.left(longestName)));
}

} // namespace

std::vector<ClassStudent> studentsOfClass(library::ScoreLibrary& scores, double classNumber)
{
    database::Statement& rows =
        scores.Conn.prepared(u"select ID, 学号, 姓名 from 信息表 where 班级=? order by rowid"_s);
    rows.bind({classNumber});
    std::vector<ClassStudent> students;
    while (rows.step())
        students.push_back({rows.integer(0), rows.value(1).text(), rows.text(2)});
    rows.finish();
    return students;
}

QString studentHeading(double classNumber, const ClassStudent& student)
{
    return u"%1 班 %2 号 %3"_s.arg(runtime::doubleText(classNumber), student.number, student.name);
}

QStringList pictureNames(double classNumber, const std::vector<ClassStudent>& students)
{
    QStringList names;
    for (const ClassStudent& student : students)
        names.append(runtime::freeFileName(pictureName(classNumber, student), names));
    return names;
}

} // namespace individual
