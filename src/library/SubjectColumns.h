#pragma once

#include <vector>

#include <QStringList>

namespace library {

/// A statement that gives a table a column; %1 in it stands for the column's name.
struct AddedColumn
{
    QString sql;
    QString name;
};

/// What a subject or total brings into 成绩表, 考试名称表 and 教师表, in the order in which the
/// columns are added; all but what addedTRank says.
std::vector<AddedColumn> addedColumns(const QString& subject);

/// The rank of a total by its T score, which a new library gets behind the columns of all subjects;
/// none for a subject.
std::vector<AddedColumn> addedTRank(const QString& subject);

/// The tables that have columns for each subject.
const QStringList& subjectTables();

} // namespace library
