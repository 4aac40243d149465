#pragma once

#include <cstdio>
#include <string>

/// What the score export of a large school puts into a workbook: a block of rows for each student,
/// either below each other or on a page of its own with a chart.
namespace blocks {

constexpr int students = 3000;
constexpr int exams = 6;
constexpr int columns = 10;
constexpr int rankColumn = 5;
constexpr int blankRows = 2;
constexpr int rowsOfPage = 31;
constexpr int rowsOfBlock = 2 + exams; // name, headings, exams
constexpr int chartColumns = 12;
constexpr int studentsOfSheet = 1023;

inline std::string studentTitle(int student)
{
    return std::to_string(student / 60 + 1) + " 班" + std::to_string(student % 60 + 1) + " 号：学生"
           + std::to_string(student);
}

inline std::string chartTitle(int student)
{
    return "学生" + std::to_string(student) + "排名分析(共3000人)";
}

inline std::string heading(int column)
{
    return column == 1 ? "考试名称" : "科目" + std::to_string(column);
}

inline std::string examName(int exam)
{
    return "第" + std::to_string(exam + 1) + "次考试";
}

/// A score, or a rank from 1 on.
inline double number(int student, int exam, int column)
{
    const int mixed = student * 7 + exam * 331 + column * 17;
    return column == rankColumn ? mixed % students + 1 : mixed % 301 / 2.0;
}

} // namespace blocks
