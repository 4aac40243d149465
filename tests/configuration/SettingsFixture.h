#pragma once

#include <gtest/gtest.h>

#include "configuration/AnalysisSettings.h"
#include "platform/grid/GridText.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

using namespace Qt::StringLiterals;

/// A library of two streams whose settings are the shipped ones.
///
///          语文   数学
///     文   120    150    期中
///     理   150    (none) 期中, (none) in an earlier 摸底 of 90
class SettingsTest : public testing::Test
{
protected:
    SettingsTest()
    {
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(2, 1, u"乙"_s, u"理"_s, 2);
        test.addExam(u"期中"_s, u"文"_s, 2, {{u"语文"_s, 120}, {u"数学"_s, 150}});
        test.addExam(u"摸底"_s, u"理"_s, 1, {{u"语文"_s, 90}, {u"数学"_s, 90}});
        test.addExam(u"期中"_s, u"理"_s, 2, {{u"语文"_s, 150}});
        test.reload();
        settings.load();
    }

    /// A row of the settings' grid, cells joined by "|".
    QString row(const QString& name) const
    {
        QStringList cells;
        for (int col = 0; col < settings.settings.Cols(); ++col)
            cells.append(settings.settings.TextMatrix(settings.rowOf(name), col));
        return cells.join(u'|');
    }

    QString stored(const QString& name)
    {
        return test.rows(
            u"select ID, 名称, 设置, 加入综合分析, 自定义 from 设置表 where 名称='%1'"_s.arg(name));
    }

    QString storedConditions() { return test.rows(u"select * from 详细设置表"_s); }

    void set(const QString& name, const QString& field, const QString& sqlValue)
    {
        test.execute(u"update 设置表 set %1=%2 where 名称='%3'"_s.arg(field, sqlValue, name));
        settings.load();
    }

    configuration::SubjectConditions conditionsOf(const QString& name)
    {
        return settings.SzGekE(settings.rowOf(name));
    }

    static QString rowsOf(const configuration::SubjectConditions& conditions)
    {
        const QString text = grid::gridText(conditions.conditions);
        return text.mid(text.indexOf(u'\n') + 1).replace(u'\t', u' ').replace(u'\n', u'/');
    }

    support::TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    configuration::AnalysisSettings settings{test.scores};
};
