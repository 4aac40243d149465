#pragma once

#include <QStringList>

namespace library {

// The columns that each subject or total brings into 成绩表, beside the score under its own name.

/// Rank in the grade: 语文年名. Of a column of T scores it is the rank by them: 总分T分年名.
QString gradeRankColumn(const QString& column);
/// Rank in the class: 语文班名.
QString classRankColumn(const QString& column);
/// Standard score z: 语文Z分.
QString zScoreColumn(const QString& column);
/// T score: 语文T分.
QString tScoreColumn(const QString& column);
/// Rank of a total in the grade by its T score: 总分T分年名.
QString tRankColumn(const QString& total);
/// A subject or total with all columns that can be derived of it.
QStringList columnsOf(const QString& column);

/// True for a column of ranks in the grade.
bool isGradeRankColumn(const QString& column);
/// True exactly when the last two characters are 总分: the column is a total then.
bool isTotal(const QString& column);

/// The column of a library's one grand total.
extern const QString GrandTotal;

// Families of columns that are shown together. With the stream's name, or AllStreams, behind it a
// family is the name of a choice of columns in 自定义显示表.

extern const QString ScoreFamily;
extern const QString ZScoreFamily;
extern const QString TScoreFamily;
/// Stands for all streams where one is chosen.
extern const QString AllStreams;

/// So many fields at the head of 成绩表 no list of columns offers: id, 考试编号 and 类别代码.
inline constexpr int fieldsNotOffered = 3;

} // namespace library
