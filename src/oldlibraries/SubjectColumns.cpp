#include "oldlibraries/SubjectColumns.h"

#include "platform/database/ColumnDeclaration.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;
using database::columnNames;

namespace {

const QString tableOfScores = u"成绩表"_s;
const QString teacherTable = u"教师表"_s;

/// The type of one of `scoreColumns(subject)`.
QString declaredType(const QString& subject, const QString& column)
{
    if (column == subject)
        return u"Single REAL"_s;
    return column.endsWith(u"名"_s) ? u"Long INTEGER"_s : u"Double REAL"_s;
}

void addMissing(database::Connection& library, const QString& table,
                const std::vector<ColumnDeclaration>& wanted, const QString& subject,
                std::vector<Finding>& findings)
{
    const QStringList present = columnNames(library, table);
    for (const ColumnDeclaration& column : wanted) {
        if (present.contains(column.name, Qt::CaseInsensitive))
            continue;
        database::addColumn(library, table, column);
        findings.push_back(
            {table,
             0,
             column.name,
             {},
             u"考试名称表里有“%1”，这里缺少这一列，已经添加，没有值。"_s.arg(subject)});
    }
}

void findUnknown(database::Connection& library, const QString& table, const QStringList& candidates,
                 std::vector<Finding>& findings)
{
    const QStringList subjects = subjectsOf(library);
    for (const QString& candidate : candidates) {
        if (!subjects.contains(candidate, Qt::CaseInsensitive))
            findings.push_back(
                {table, 0, candidate, {}, u"考试名称表里没有这个科目，程序里看不到；原样转入。"_s});
    }
}

} // namespace

bool isTotal(const QString& column)
{
    return column.endsWith(u"总分"_s);
}

QStringList scoreColumns(const QString& subject)
{
    QStringList columns{subject, subject + u"年名"_s, subject + u"班名"_s, subject + u"Z分"_s,
                        subject + u"T分"_s};
    if (isTotal(subject))
        columns.append(subject + u"T分年名"_s);
    return columns;
}

QStringList subjectsOf(database::Connection& library)
{
    constexpr int fixedColumns = 5;
    return columnNames(library, u"考试名称表"_s).mid(fixedColumns);
}

void addSubjectColumns(database::Connection& library, std::vector<Finding>& findings)
{
    for (const QString& subject : subjectsOf(library)) {
        std::vector<ColumnDeclaration> scores;
        for (const QString& column : scoreColumns(subject))
            scores.push_back({column, declaredType(subject, column)});
        addMissing(library, tableOfScores, scores, subject, findings);
        addMissing(library, teacherTable, {{subject, u"text(50)"_s, u"NOCASE"_s}}, subject,
                   findings);
    }
}

void findUnknownSubjects(database::Connection& library, std::vector<Finding>& findings)
{
    const QStringList columns = columnNames(library, tableOfScores);
    QStringList ranked = columns;
    ranked.removeIf([&](const QString& column) {
        // The T scores of a total have ranks too.
        return !columns.contains(column + u"年名"_s, Qt::CaseInsensitive)
               || !columns.contains(column + u"班名"_s, Qt::CaseInsensitive);
    });
    findUnknown(library, tableOfScores, ranked, findings);
    QStringList taught = columnNames(library, teacherTable);
    taught.removeIf([](const QString& column) {
        return column == u"考试名称"_s || column == u"班级"_s || column == u"ID"_s;
    });
    findUnknown(library, teacherTable, taught, findings);
}

} // namespace oldlibraries
