#include "statistics/SettingComplaint.h"

#include "ReportFixture.h"
#include "statistics/LineTable.h"

namespace {

using statistics::settingComplaint;

class SettingComplaints : public ReportTest
{
protected:
    static QString complaint(const QString& name, const QString& value)
    {
        return settingComplaint({u"文"_s, u"理"_s}, name, value);
    }
};

TEST_F(SettingComplaints, AreNoneWhereTheReportReadsWhatIsMeant)
{
    const std::pair<QString, QString> good[]{
        {u"T分"_s, u"10z+50"_s},
        {u"T分"_s, u"10 Z + 50"_s},
        {u"高分段"_s, u"[0.85,1]"_s},
        {u"低分段"_s, u"[0,0.4)"_s},
        {u"各科优秀率"_s, u"[0.85,]"_s},
        {u"各科良好率"_s, u"[,0.6)"_s},
        {u"各科及格率"_s, u"(0.6,0]"_s},
        {u"各科差生率"_s, u"(使用自定义数据)"_s},
        {u"各分数段人数"_s, u"单科10,总分50"_s},
        {u"总分上线人数"_s, u"500, 450"_s},
        {u"总分上线人数"_s, u"文=500,450||理=520"_s},
        {u"各名次段人数"_s, u"10,50,-50"_s},
        {u"各名次段均分"_s, u""_s},
        {u"历次考试进入年级前x名人数 "_s, u"50,100"_s},
        {u"考试人数"_s, u"随便什么"_s},
        {u"各科平均分"_s, u"使用教师名单"_s},
        {u"没有这一项"_s, u"["_s},
    };
    for (const auto& [name, value] : good)
        EXPECT_EQ(complaint(name, value), QString()) << name.toStdString() << value.toStdString();
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(SettingComplaints, SayWhatIsWrongWithAnInterval)
{
    const QString brackets = u"区间的两端要有括号，如 [0.85,1]。"_s;
    const QString numbers = u"逗号两边要是数字，如 [0.85,1]。"_s;
    const QString shares = u"两个数是满分的比例，从小到大，如 [0.85,1]；现在没有分数在区间里。"_s;
    const std::pair<QString, QString> bad[]{
        {u""_s, u"条件“”不是区间，缺少逗号。"_s},
        {u"[0.6]"_s, u"条件“[0.6]”不是区间，缺少逗号。"_s},
        {u"[0.6，1]"_s, u"条件“[0.6，1]”不是区间，缺少逗号。"_s},
        {u"0.6,1"_s, brackets},
        {u"[0.6,1"_s, brackets},
        {u"【0.6,1】"_s, brackets},
        {u"[六成,1]"_s, numbers},
        {u"[0.6,0.8,1]"_s, numbers},
        {u"[80,100]"_s, shares},
        {u"[0.8,0.6]"_s, shares},
    };
    for (const auto& [value, says] : bad)
        EXPECT_EQ(complaint(u"各科优秀率"_s, value), says) << value.toStdString();
}

TEST_F(SettingComplaints, SayWhatIsWrongWithALineOfNumbers)
{
    const QString many = QStringList(statistics::MostLines + 1, u"5"_s).join(u',');
    const std::pair<QString, QString> bad[]{
        {u"文=500,理=520"_s, u"条件设置不正确！缺少分隔符  ||  \n文=500,理=520"_s},
        {u"文=500||理=520||"_s, u"“”缺少等号。"_s},
        {u"文=500||理=五百"_s, u"“五百”不是数字。"_s},
        {u"500,,450"_s, u"“”不是数字。"_s},
        {u"500，450"_s, u"“500，450”不是数字。"_s},
        {u"inf"_s, u"“inf”不是数字。"_s},
        {many, u"条件设置不正确！数字太多，最多 1000 个。"_s},
    };
    for (const auto& [value, says] : bad)
        EXPECT_EQ(complaint(u"总分上线人数"_s, value), says);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(SettingComplaints, SayWhatIsWrongWithWidthsAndWithTheConversion)
{
    EXPECT_EQ(complaint(u"各分数段人数"_s, u"单科十,总分50"_s),
              u"分数段设置有问题\n单科分数段=0\n总分分数段=50"_s);
    EXPECT_EQ(complaint(u"各分数段人数"_s, u"10"_s),
              u"分数段设置有问题\n单科分数段=0\n总分分数段=0"_s);
    EXPECT_EQ(complaint(u"T分"_s, u"50"_s), u"T分转换公式设置不正确！应当是 10z+50 这样的形式。"_s);
    EXPECT_EQ(complaint(u"T分"_s, u"z+50"_s), u"z 前面要有大于 0 的数字，如 10z+50。"_s);
}

} // namespace
