#include "library/CopyContent.h"

#include <algorithm>

#include "library/Catalogue.h"
#include "library/ColumnNames.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/database/TableNames.h"

namespace library {

using namespace Qt::StringLiterals;
using database::Connection;
using database::SqlPiece;
using database::Statement;

namespace {

constexpr int rowsBetweenLooks = 4096;

const QString StudentList = u"信息表"_s;
const QString Scores = u"成绩表"_s;
const QString Exams = u"考试名称表"_s;

/// Further than one fingerprint, in an order that counts.
quint64 joined(quint64 sum, quint64 next)
{
    return (sum ^ next) * 0x100000001b3U + (sum >> 47U);
}

quint64 marksFrom(const Statement& row, int column)
{
    quint64 sum = 0xcbf29ce484222325U;
    const int count = row.columnCount();
    for (; column < count; ++column)
        sum = joined(sum, row.fingerprint(column));
    return sum;
}

bool isBinary(const database::Column& column)
{
    return column.type.kind == database::ColumnType::Kind::Binary;
}

/// The columns of a table that both have, in the order of the first, without pictures.
QStringList commonTo(const QString& table, Connection& first, Connection& second)
{
    QStringList names;
    for (const database::Column& column : first.columns(table)) {
        if (!isBinary(column) && second.columns(table).find(column.name) >= 0)
            names.append(column.name);
    }
    return names;
}

QStringList commonPictures(Connection& first, Connection& second)
{
    QStringList names;
    for (const database::Column& column : first.columns(StudentList)) {
        if (isBinary(column) && second.columns(StudentList).find(column.name) >= 0)
            names.append(column.name);
    }
    return names;
}

void take(QStringList& names, const QStringList& taken)
{
    names.removeIf([&](const QString& name) { return taken.contains(name, Qt::CaseInsensitive); });
}

void readScores(Connection& library, const CommonColumns& columns, LibraryContent& content,
                const std::function<bool(int rows)>& mayGoOn)
{
    const auto places = int(columns.scores.size());
    Statement rows(library, database::sqlWith(u"select id,考试名称%1%2 from 成绩表"_s,
                                              {SqlPiece::moreNames(columns.scores),
                                               SqlPiece::moreNames(columns.otherScores)}));
    QByteArray name;
    ExamContent* exam = nullptr;
    for (int count = 0; rows.step(); ++count) {
        if (count % rowsBetweenLooks == 0 && !mayGoOn(count))
            return;
        if (exam == nullptr || rows.bytes(1) != name) {
            name = rows.bytes(1).toByteArray();
            exam = &content.exams[rows.text(1)];
        }
        exam->rows.push_back({rows.integer(0), marksFrom(rows, 2 + places), exam->scores.size()});
        for (int i = 0; i < places; ++i)
            exam->scores.push_back(rows.fingerprint(2 + i));
    }
}

void readExams(Connection& library, const CommonColumns& columns, LibraryContent& content)
{
    Statement rows(library, database::sqlWith(u"select 考试名称%1 from 考试名称表"_s,
                                              {SqlPiece::moreNames(columns.exams)}));
    while (rows.step())
        content.exams[rows.text(0)].description += marksFrom(rows, 1);
}

void readStudents(Connection& library, const CommonColumns& columns, LibraryContent& content)
{
    Statement rows(library, database::sqlWith(u"select ID,班级,学号,姓名%1 from 信息表"_s,
                                              {SqlPiece::moreNames(columns.students)}));
    while (rows.step())
        content.students[rows.integer(0)] = {.classNumber = rows.number(1),
                                             .number = rows.number(2),
                                             .name = rows.text(3),
                                             .place =
                                                 joined(rows.fingerprint(1), rows.fingerprint(2)),
                                             .nameMark = rows.fingerprint(3),
                                             .rest = marksFrom(rows, 4)};
    for (const QString& picture : columns.pictures) {
        // The engine knows the length without reading the picture.
        Statement lengths(library, database::sqlWith(u"select ID,length(%1) from 信息表"_s,
                                                     {SqlPiece::names({picture})}));
        while (lengths.step()) {
            StudentContent& student = content.students[lengths.integer(0)];
            student.rest = joined(student.rest, lengths.fingerprint(1));
        }
    }
}

bool isOwnTable(const QString& table)
{
    return table == StudentList || table == Scores || table == Exams;
}

void readTables(Connection& library, const CommonColumns& columns, LibraryContent& content)
{
    for (const QString& table : database::tableNames(library)) {
        if (isOwnTable(table))
            continue;
        quint64& sum = content.tables[table];
        const auto common = columns.tables.find(table);
        if (common == columns.tables.end() || common->second.isEmpty())
            continue;
        Statement rows(library,
                       database::sqlWith(u"select %1 from %2"_s, {SqlPiece::names(common->second),
                                                                  SqlPiece::names({table})}));
        while (rows.step())
            sum += marksFrom(rows, 0);
    }
}

} // namespace

QStringList subjectsOf(Connection& library)
{
    QStringList names;
    int place = 0;
    for (const database::Column& column : library.columns(Exams)) {
        if (place++ >= fixedExamFields)
            names.append(column.name);
    }
    return names;
}

CommonColumns commonColumns(Connection& first, Connection& second)
{
    CommonColumns columns;
    columns.otherScores = commonTo(Scores, first, second);
    columns.scores = subjectsOf(first);
    columns.scores.removeIf([&](const QString& name) {
        return isTotal(name) || !columns.otherScores.contains(name, Qt::CaseInsensitive);
    });
    take(columns.otherScores, columns.scores + QStringList{u"id"_s, u"考试名称"_s});
    columns.exams = commonTo(Exams, first, second);
    take(columns.exams, {u"考试名称"_s});
    columns.students = commonTo(StudentList, first, second);
    take(columns.students, {u"ID"_s, u"班级"_s, u"学号"_s, u"姓名"_s});
    columns.pictures = commonPictures(first, second);
    for (const QString& table : database::tableNames(first)) {
        if (!isOwnTable(table))
            columns.tables[table] = commonTo(table, first, second);
    }
    return columns;
}

LibraryContent readContent(Connection& library, const CommonColumns& columns,
                           const std::function<bool(int rows)>& mayGoOn)
{
    LibraryContent content;
    readScores(library, columns, content, mayGoOn);
    readExams(library, columns, content);
    readStudents(library, columns, content);
    readTables(library, columns, content);
    return content;
}

} // namespace library
