#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "cli/Command.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

QJsonArray classList(const library::Catalogue& catalogue)
{
    QJsonArray classes;
    for (qsizetype i = 0; i < catalogue.Streams.size(); ++i) {
        if (size_t(i) >= catalogue.ClassTable.size())
            break;
        for (const library::ClassEntry& entry : catalogue.ClassTable[size_t(i)])
            classes.append(QJsonObject{{u"Stream"_s, catalogue.Streams[i]},
                                       {u"Class"_s, entry.number},
                                       {u"Students"_s, entry.students}});
    }
    return classes;
}

QJsonObject columnLists(const library::Catalogue& catalogue)
{
    return {{u"All"_s, QJsonArray::fromStringList(catalogue.AllColumns)},
            {u"Subjects"_s, QJsonArray::fromStringList(catalogue.SubjectColumns)},
            {u"Totals"_s, QJsonArray::fromStringList(catalogue.TotalColumns)}};
}

/// The rows of a statement as objects, by field names.
QJsonArray rowObjects(database::Connection& conn, const QString& sql)
{
    database::Recordset rows;
    rows.Open(sql, conn);
    QJsonArray objects;
    for (; !rows.Eof(); rows.MoveNext()) {
        QJsonObject object;
        for (int i = 0; i < rows.fieldCount(); ++i) {
            const database::Field field = rows.Fields(i);
            const runtime::Value value = field.Value();
            object.insert(field.Name(), value.isNull()     ? QJsonValue()
                                        : value.isNumber() ? QJsonValue(value.toDouble())
                                                           : QJsonValue(value.text()));
        }
        objects.append(object);
    }
    return objects;
}

} // namespace

Exit runInfo(Session& session)
{
    if (!session.openLibrary())
        return Exit::Error;
    const library::Catalogue& catalogue = session.scores.catalogue;
    database::Connection& conn = session.scores.Conn;
    const QJsonObject info{
        {u"LibPath"_s, conn.path()},
        {u"Streams"_s, QJsonArray::fromStringList(catalogue.Streams)},
        {u"Classes"_s, classList(catalogue)},
        {u"ExamList"_s, QJsonArray::fromStringList(catalogue.ExamList)},
        {u"Exams"_s, rowObjects(conn, u"select * from 考试名称表 order by 考试编号"_s)},
        {u"Columns"_s, columnLists(catalogue)},
        {u"Settings"_s, rowObjects(conn, u"select * from 设置表 order by ID"_s)},
    };
    printResult(QString::fromUtf8(QJsonDocument(info).toJson()));
    return session.result();
}

} // namespace cli
