#include "cli/Command.h"
#include "cli/GridOutput.h"
#include "maintenance/TeacherList.h"

namespace cli {

using namespace Qt::StringLiterals;
using maintenance::TeacherList;

namespace {

/// A cell of the list and what it gets, from a text such as "3:语文=张三,李四". Throws UsageError.
struct NewNames
{
    NewNames(const QString& text, const Session& session, const TeacherList& list);

    int row;
    int column;
    QString names;
};

NewNames::NewNames(const QString& text, const Session& session, const TeacherList& list)
{
    const qsizetype colon = text.indexOf(u':');
    const qsizetype equals = text.indexOf(u'=', colon + 1);
    if (colon < 0 || equals < 0)
        throw UsageError(u"选项 --set 的值应为 班级:科目=教师：%1"_s.arg(text));
    const QString classNumber = text.left(colon).trimmed();
    const QString name = text.mid(colon + 1, equals - colon - 1).trimmed();
    row = list.GetBJRow(classNumber);
    column = session.scores.catalogue.GetKmID(name);
    names = text.mid(equals + 1);
    if (row == 0)
        throw UsageError(u"成绩库里没有班级“%1”。"_s.arg(classNumber));
    if (column < 0)
        throw UsageError(u"成绩库里没有科目或总分“%1”。"_s.arg(name));
}

/// Puts the list together that is to be saved; false if the options change nothing. Throws
/// UsageError.
bool change(TeacherList& list, const Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString source = arguments.value(u"copy-from"_s);
    if (arguments.has(u"copy-from"_s)) {
        session.requireExams({source});
        list.copyFrom(source);
    }
    for (const QString& text : arguments.values(u"set"_s)) {
        const NewNames cell(text, session, list);
        list.teachers.setTextMatrix(cell.row, cell.column, cell.names);
    }
    return arguments.has(u"copy-from"_s) || arguments.has(u"set"_s);
}

} // namespace

Exit runTeachers(Session& session)
{
    const QString format = session.arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    const QString exam = session.arguments.value(u"exam"_s);
    if (exam.isEmpty())
        throw missingOption(u"exam"_s);
    if (!session.openLibrary())
        return Exit::Error;
    session.requireExams({exam});
    TeacherList list(session.scores);
    list.load();
    list.show(exam);
    if (change(list, session)) {
        if (!list.save())
            return Exit::Error;
        list.show(exam);
    }
    printGrid(session, list.teachers, {}, format);
    return session.result();
}

} // namespace cli
