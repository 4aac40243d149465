#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

/// A row of 设置表 in a new library.
struct Setting
{
    QString name;
    QString value;
    QString inAnalysis;
    QString bySubject;
    QString choices;
};

const QString conditions = u"点此设置各科条件"_s;

const std::vector<Setting> settings{
    {u"T分"_s, u"10z+50"_s, u"否"_s, {}, {}},
    {u"参与统计的学生类别代码"_s, u"(全部)"_s, u"否"_s, {}, {}},
    {u"高分段"_s, u"[0.9,1]"_s, u"是"_s, conditions, {}},
    {u"低分段"_s, u"[0,0.4)"_s, u"否"_s, conditions, {}},
    {u"各科优秀率"_s, u"[0.85,1]"_s, u"是"_s, conditions, {}},
    {u"各科良好率"_s, u"[0.75,0.85)"_s, u"是"_s, conditions, {}},
    {u"各科及格率"_s, u"[0.6,1]"_s, u"是"_s, conditions, {}},
    {u"各科差生率"_s, u"[0,0.4)"_s, u"是"_s, conditions, {}},
    {u"各科平均分"_s, u"使用教师名单"_s, u"是"_s, {}, u"使用教师名单,不使用教师名单"_s},
    {u"各科最高分"_s, {}, u"是"_s, {}, {}},
    {u"各科最低分"_s, {}, u"是"_s, {}, {}},
    {u"各科标准差"_s, {}, u"是"_s, {}, {}},
    {u"各分数段人数"_s, u"单科10,总分50"_s, u"是"_s, {}, {}},
    {u"总分上线人数"_s, u"文=550,480,400||理=530,450,370"_s, u"是"_s, {}, {}},
    {u"各名次段均分"_s, u"50,100,200"_s, u"是"_s, {}, {}},
    {u"各名次段人数"_s, u"10,50,100,200,-50"_s, u"是"_s, {}, {}},
    {u"历次各名次段人数对比"_s, {}, u"是"_s, {}, {}},
    {u"考试人数"_s, {}, u"是"_s, {}, {}},
    {u"历次考试进入年级前x名人数 "_s, u"50,100,200"_s, u"是"_s, {}, {}},
    {u"历次总分上线人数"_s, {}, u"是"_s, {}, {}},
    {u"进行对比分析的考试"_s, u"(全部)"_s, u"否"_s, {}, {}},
};

TEST(DefaultSettings, AreTheseRowsWhole)
{
    support::TestLibrary test{{u"语文"_s}};
    QStringList expected;
    for (const Setting& setting : settings)
        expected.append(QStringList{QString::number(expected.size() + 1), setting.name,
                                    setting.value, setting.inAnalysis, setting.bySubject,
                                    setting.choices, u"0"_s}
                            .join(u'|'));
    EXPECT_EQ(test.rows(u"select ID, 名称, 设置, 加入综合分析, 各科条件, 选项, 自定义 from 设置表 "
                        "order by ID"_s)
                  .split(u" / "_s),
              expected);
}

TEST(DefaultSettings, HaveTheFieldsInTheirOrder)
{
    support::TestLibrary test{{u"语文"_s}};
    QStringList names;
    for (const database::Column& column : test.scores.Conn.columns(u"设置表"_s))
        names.append(column.name);
    EXPECT_EQ(names.join(u' '), u"ID 名称 设置 加入综合分析 各科条件 选项 自定义"_s);
}

} // namespace
