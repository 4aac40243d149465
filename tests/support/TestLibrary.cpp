#include "support/TestLibrary.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "library/NewLibrary.h"

namespace support {

namespace {

void setFields(database::Recordset& rows, NamedValues columns)
{
    for (const auto& [name, value] : columns)
        rows.Fields(name).setValue(value);
}

} // namespace

TestLibrary::TestLibrary(const QStringList& subjects)
    : paths(makeAppFolder(folder.path())), scores(paths)
{
    scores.LibPath = file(QStringLiteral("测试.CJK"));
    library::NewLibrary(scores).create(subjects);
    EXPECT_TRUE(scores.Conn.isOpen());
    EXPECT_EQ(dialogs.shown, QStringList());
}

qint64 TestLibrary::addStudent(double classNumber, double number, const QString& name,
                               const QString& stream, double category)
{
    database::Recordset rows;
    rows.Open(QStringLiteral("select * from 信息表"), scores.Conn);
    rows.AddNew();
    setFields(rows, {{QStringLiteral("班级"), classNumber},
                     {QStringLiteral("学号"), number},
                     {QStringLiteral("姓名"), name},
                     {QStringLiteral("科类"), stream},
                     {QStringLiteral("类别代码"), category}});
    rows.Update();
    return rows.lastInsertId();
}

void TestLibrary::addExam(const QString& exam, const QString& stream, int number,
                          NamedValues columns)
{
    database::Recordset rows;
    rows.Open(QStringLiteral("select * from 考试名称表"), scores.Conn);
    rows.AddNew();
    setFields(rows, {{QStringLiteral("考试名称"), exam},
                     {QStringLiteral("科类"), stream},
                     {QStringLiteral("考试编号"), number}});
    setFields(rows, columns);
    rows.Update();
}

void TestLibrary::addScores(const QString& exam, double classNumber, double number,
                            NamedValues columns)
{
    database::Recordset student;
    student.Open(QStringLiteral("select * from 信息表 where 班级=%1 and 学号=%2")
                     .arg(classNumber)
                     .arg(number),
                 scores.Conn);
    database::Recordset rows;
    rows.Open(QStringLiteral("select * from 成绩表"), scores.Conn);
    rows.AddNew();
    setFields(rows, {{QStringLiteral("班级"), classNumber},
                     {QStringLiteral("学号"), number},
                     {QStringLiteral("考试名称"), exam}});
    if (!student.Eof()) {
        rows.Fields(QStringLiteral("id")).setValue(student.Fields(QStringLiteral("ID")).Value());
        for (const char* same : {"姓名", "类别代码", "科类"}) {
            const QString name = QString::fromUtf8(same);
            rows.Fields(name).setValue(student.Fields(name).Value());
        }
    }
    setFields(rows, columns);
    rows.Update();
}

void TestLibrary::execute(const QString& sql)
{
    scores.Conn.Execute(sql);
}

QString TestLibrary::rows(const QString& sql)
{
    database::Recordset rows;
    rows.Open(sql, scores.Conn);
    QStringList lines;
    for (; !rows.Eof(); rows.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < rows.fieldCount(); ++i) {
            const runtime::Value value = rows.Fields(i).Value();
            cells.append(value.isNull() ? QStringLiteral("NULL") : value.text());
        }
        lines.append(cells.join(u'|'));
    }
    return lines.join(QStringLiteral(" / "));
}

void TestLibrary::reload()
{
    scores.catalogue.GetKeLei();
    scores.catalogue.GetKSXX();
}

runtime::AppPaths TestLibrary::makeAppFolder(const QString& folder)
{
    const QDir app(folder);
    app.mkpath(QStringLiteral("data"));
    const QDir shipped(QStringLiteral(YUNSHAN_PROGRAM_FOLDER));
    QFile::copy(shipped.filePath(QStringLiteral("MFC.dll")),
                app.filePath(QStringLiteral("MFC.dll")));
    const QStringList files = QDir(shipped.filePath(QStringLiteral("data")))
                                  .entryList({QStringLiteral("*.txt"), QStringLiteral("*.jpg"),
                                              QStringLiteral("*.gif"), QStringLiteral("*.ico")});
    for (const QString& name : files)
        QFile::copy(shipped.filePath(QStringLiteral("data/") + name),
                    app.filePath(QStringLiteral("data/") + name));
    return runtime::AppPaths(folder);
}

} // namespace support
