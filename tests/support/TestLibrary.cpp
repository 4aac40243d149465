#include "support/TestLibrary.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "library/NewLibrary.h"
#include "support/RowTexts.h"

namespace support {

using namespace Qt::StringLiterals;

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
    scores.LibPath = file(u"测试.CJK"_s);
    library::NewLibrary(scores).create(subjects);
    EXPECT_TRUE(scores.Conn.isOpen());
    EXPECT_EQ(dialogs.shown, QStringList());
}

qint64 TestLibrary::addStudent(double classNumber, double number, const QString& name,
                               const QString& stream, double category)
{
    database::Recordset rows;
    rows.Open(u"select * from 信息表"_s, scores.Conn);
    rows.AddNew();
    setFields(rows, {{u"班级"_s, classNumber},
                     {u"学号"_s, number},
                     {u"姓名"_s, name},
                     {u"科类"_s, stream},
                     {u"类别代码"_s, category}});
    rows.Update();
    return rows.lastInsertId();
}

void TestLibrary::addExam(const QString& exam, const QString& stream, int number,
                          NamedValues columns)
{
    database::Recordset rows;
    rows.Open(u"select * from 考试名称表"_s, scores.Conn);
    rows.AddNew();
    setFields(rows, {{u"考试名称"_s, exam}, {u"科类"_s, stream}, {u"考试编号"_s, number}});
    setFields(rows, columns);
    rows.Update();
}

void TestLibrary::addScores(const QString& exam, double classNumber, double number,
                            NamedValues columns)
{
    database::Recordset student;
    student.Open(u"select * from 信息表 where 班级=%1 and 学号=%2"_s.arg(classNumber).arg(number),
                 scores.Conn);
    database::Recordset rows;
    rows.Open(u"select * from 成绩表"_s, scores.Conn);
    rows.AddNew();
    setFields(rows, {{u"班级"_s, classNumber}, {u"学号"_s, number}, {u"考试名称"_s, exam}});
    if (!student.Eof()) {
        rows.Fields(u"id"_s).setValue(student.Fields(u"ID"_s).Value());
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
    return rowTexts(rows);
}

void TestLibrary::reload()
{
    scores.catalogue.GetKeLei();
    scores.catalogue.GetKSXX();
}

runtime::AppPaths TestLibrary::makeAppFolder(const QString& folder)
{
    const QDir app(folder);
    app.mkpath(u"data"_s);
    const QDir shipped(QStringLiteral(YUNSHAN_PROGRAM_FOLDER));
    QFile::copy(shipped.filePath(u"MFC.dll"_s), app.filePath(u"MFC.dll"_s));
    const QStringList files = QDir(shipped.filePath(u"data"_s))
                                  .entryList({u"*.txt"_s, u"*.jpg"_s, u"*.gif"_s, u"*.ico"_s});
    for (const QString& name : files)
        QFile::copy(shipped.filePath(u"data/"_s + name), app.filePath(u"data/"_s + name));
    return runtime::AppPaths(folder);
}

} // namespace support
