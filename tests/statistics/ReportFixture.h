#pragma once

#include <gtest/gtest.h>

#include "statistics/Reports.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

using namespace Qt::StringLiterals;

/// A library of one stream with two classes and one exam, and a report grid over it:
///
///              语文 (100)   数学 (50)   总分   语文年名
///     1班 甲   90           40          130    1
///         乙   60           20          80     3
///         丙   -1 (absent)  30          30     -1
///     2班 丁   80           50          130    2
class ReportTest : public testing::Test
{
protected:
    ReportTest()
    {
        library.addStudent(1, 1, u"甲"_s, u"理"_s);
        library.addStudent(1, 2, u"乙"_s, u"理"_s);
        library.addStudent(1, 3, u"丙"_s, u"理"_s);
        library.addStudent(2, 1, u"丁"_s, u"理"_s);
        addExam(u"期中"_s, 1);
        score(u"期中"_s, 1, 1, {90, 40, 130, 1});
        score(u"期中"_s, 1, 2, {60, 20, 80, 3});
        score(u"期中"_s, 1, 3, {-1, 30, 30, -1});
        score(u"期中"_s, 2, 1, {80, 50, 130, 2});
        library.reload();
    }

    struct Scores
    {
        double chinese;
        double maths;
        double total;
        int chineseRank;
    };

    void addExam(const QString& exam, int number)
    {
        library.addExam(exam, u"理"_s, number,
                        {{u"语文"_s, 100}, {u"数学"_s, 50}, {u"总分"_s, u"语文+数学"_s}});
    }

    void score(const QString& exam, double classNumber, double number, const Scores& scores)
    {
        library.addScores(exam, classNumber, number,
                          {{u"语文"_s, scores.chinese},
                           {u"数学"_s, scores.maths},
                           {u"总分"_s, scores.total},
                           {u"语文年名"_s, scores.chineseRank}});
    }

    /// Adds a class of the other stream with one student, and the exam for that stream.
    void addSecondStream()
    {
        library.addStudent(5, 1, u"戊"_s, u"文"_s);
        library.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 100}});
        library.addScores(u"期中"_s, 5, 1, {{u"语文"_s, 70}, {u"语文年名"_s, 1}});
        library.reload();
    }

    /// Stores the value of a setting.
    void set(const QString& name, const QString& value)
    {
        library.execute(u"update 设置表 set 设置='%1' where 名称='%2'"_s.arg(value, name));
    }

    /// A row of the grid, cells joined by "|".
    QString row(int number) const
    {
        QStringList cells;
        for (int col = 0; col < grid.Cols(); ++col)
            cells.append(grid.TextMatrix(number, col));
        return cells.join(QLatin1Char('|'));
    }

    QStringList rows() const
    {
        QStringList all;
        for (int number = 0; number < grid.Rows(); ++number)
            all.append(row(number));
        return all;
    }

    support::TestLibrary library{{u"语文"_s, u"数学"_s, u"总分"_s}};
    statistics::ReportContext context{library.scores};
    grid::FlexGrid grid;
    QString exams = u"期中"_s;
};
