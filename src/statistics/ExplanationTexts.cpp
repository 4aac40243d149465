#include "statistics/ExplanationTexts.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

const QString allClasses =
    u"学生名单里今天有学生的全部班级，每个科类一块；“班级”列表里选了哪些班不起作用。"_s;
const QString rowsOfExams = u"选了几次考试，每班每次考试一行。"_s;
const QString lastExam = u"只统计一次考试，选了几次时是最后一次。"_s;
const QString marksAddUp = u"选了几次考试，每班每次考试一行，分数线里的满分是这几次相加的和。"_s;
const QString noRow =
    u"成绩记在名单上今天已经没有的班级、或者记在那个班今天没有的科类下的学生，统计表里任何一行都不算。"_s;
const QString cheated = u"作弊记 0 分，算参加考试。"_s;
const QString outOfInterval =
    u"缺考（记 -1）和没有成绩的学生不在从 0 分起的区间里；自定义的条件容得下 -1 时，缺考的学生算在内。"_s;
const QString totalOfNobody =
    u"计算总分时，公式里各科都缺考或没有成绩的学生，总分记 -1，即缺考。"_s;
const QString roster =
    u"班级现有人数 = 学生名单里这个班现在的全部学生，不分类别，缺考的也在内，所以缺考会拉低比例。"_s;
const QString absentInLastBand =
    u"缺考的学生名次是 -1，前 x 名里不算；后 x 名里，x 比最后名次至少大 2 时才算上他们。"_s;
const QString noRank = absentInLastBand
                       + u"没有成绩（空）的学生在计算名次时与最后一名并列，含最后一名的段里会算"
                         "上他。没有计算过总分和名次的考试，人数都是 0。"_s;
const QStringList bands{
    u"前 x 名 = 年级名次从 1 到 x 的人数；后 x 名 = 年级名次不小于“最后名次 - x + 1”的人数。"_s,
    u"最后名次是有这次考试成绩的学生（本科类、选中的类别）最大的年级名次，不在任何一行里的学生的名次也在内。名次并列时，一段里会多于 x 人。"_s,
    u"各段都从头（或从尾）数起，前 50 名里包含前 10 名。"_s};

const QString marksOfInterval =
    u"设置是区间时，分数线 = 区间的两个数 × 满分。"
    "设置是“(使用自定义数据)”时，用各科自己的条件，没有设定条件的科没有结果。"_s;

ExplanationText rate(const QString& report, const QString& what)
{
    return {.report = report,
            .otherNames = {},
            .counted = u"每班每科"_s + what + u"的人数，以及占班级现有人数的百分比。不含总分。"_s,
            .over = allClasses,
            .severalExams = marksAddUp,
            .leftOut = outOfInterval + u"没有算上的学生也在分母里。"_s + cheated,
            .formulas = {u"人数 = 成绩在区间里（符合条件）的人数。"_s,
                         u"比例% = 人数 × 100 ÷ 班级现有人数，保留两位小数。"_s, roster,
                         marksOfInterval},
            .settings = {{report, SettingForm::Interval}}};
}

std::vector<ExplanationText> tablesOfShares()
{
    return {
        {.report = u"考试人数"_s,
         .otherNames = {},
         .counted =
             u"每班每科（含总分）参试、缺考和总计的人数，写成“参试/缺考/总计”，如 52/1/53。"_s,
         .over = allClasses,
         .severalExams = lastExam,
         .leftOut = u"这一科没有成绩（空）的学生，三个数里都不算。"_s + totalOfNobody + cheated,
         .formulas =
             {u"参试 = 成绩不小于 0 的人数；缺考 = 成绩小于 0 的人数；总计 = 有成绩的人数，即两者之和。"_s},
         .settings = {}},
        {.report = u"高分段、低分段"_s,
         .otherNames = {u"高分段"_s, u"低分段"_s, u"高、低分段"_s},
         .counted = u"每班每科成绩在高分段、在低分段里的人数。不含总分。"_s,
         .over = allClasses,
         .severalExams = marksAddUp,
         .leftOut = outOfInterval + cheated,
         .formulas = {u"人数 = 成绩在区间里（符合条件）的人数。"_s, marksOfInterval},
         .settings = {{u"高分段"_s, SettingForm::Interval}, {u"低分段"_s, SettingForm::Interval}}},
        rate(u"各科优秀率"_s, u"达到优秀"_s),
        rate(u"各科良好率"_s, u"达到良好"_s),
        rate(u"各科及格率"_s, u"及格"_s),
        rate(u"各科差生率"_s, u"属于差生"_s),
    };
}

const QString emptyColumns =
    u"设置“各科平均分”是“使用教师名单”时，每科占三列，后两列是空的；否则每科一列。"_s;

std::vector<ExplanationText> tablesOfAggregates()
{
    return {
        {.report = u"各科平均分"_s,
         .otherNames = {},
         .counted = u"每班每科的平均分，和这个平均分在各班之间的名次。不含总分。"_s,
         .over = allClasses,
         .severalExams = rowsOfExams,
         .leftOut =
             u"没有成绩（空）的学生不算。缺考的学生算在内，按 -1 分，所以有人缺考时平均分偏低。"_s
             + cheated,
         .formulas =
             {u"平均分 = 有成绩的学生的成绩之和 ÷ 他们的人数，保留两位小数。"_s,
              u"名次按表里的两位小数，在同一次考试、同一科类的各班之间排；相同则并列，后面的名次空出来（1，1，3）。"_s},
         .settings = {{u"各科平均分"_s, SettingForm::Teachers}}},
        {.report = u"各科最高分"_s,
         .otherNames = {},
         .counted = u"每班每科的最高分。不含总分。"_s,
         .over = allClasses,
         .severalExams = rowsOfExams,
         .leftOut = u"没有成绩（空）的学生不算。缺考的学生按 -1 分算在内，全班都缺考时显示 -1。"_s,
         .formulas = {u"最高分 = 有成绩的学生的成绩里最大的一个。"_s, emptyColumns},
         .settings = {{u"各科平均分"_s, SettingForm::Columns}}},
        {.report = u"各科最低分"_s,
         .otherNames = {},
         .counted = u"每班每科的最低分。不含总分。"_s,
         .over = allClasses,
         .severalExams = rowsOfExams,
         .leftOut = u"缺考和没有成绩的学生不算。"_s + cheated,
         .formulas = {u"最低分 = 不小于 0 的成绩里最小的一个。"_s, emptyColumns},
         .settings = {{u"各科平均分"_s, SettingForm::Columns}}},
        {.report = u"各科标准差"_s,
         .otherNames = {},
         .counted = u"每班每科成绩的样本标准差，表示成绩分散的程度。不含总分。"_s,
         .over = allClasses,
         .severalExams = rowsOfExams,
         .leftOut = u"缺考和没有成绩的学生不算。只有一个成绩的班是空的。"_s + cheated,
         .formulas =
             {u"标准差 = √( Σ(成绩 - 平均分)² ÷ (人数 - 1) )，这里的平均分和人数不含缺考，保留两位小数。"_s},
         .settings = {}},
        {.report = u"各分数段人数"_s,
         .otherNames = {},
         .counted = u"每个科目、每个总分一张小表：每班成绩在各个等宽分数段里的人数。"_s,
         .over = allClasses,
         .severalExams = lastExam,
         .leftOut = u"缺考和没有成绩的学生不算，高出最后一段的成绩不计入。"_s + cheated,
         .formulas = {u"从 0 分起按固定宽度分段，每段含下端点、不含上端点，如 [60,70)。"_s,
                      u"满分正好被分完时，最后一段含满分，如 [90,100]。"_s},
         .settings = {{u"各分数段人数"_s, SettingForm::Widths}}},
        {.report = u"总分上线人数"_s,
         .otherNames = {u"历次总分上线人数"_s},
         .counted = u"每班“总分”达到各条分数线的人数。统计的是名叫“总分”的那一列。"_s,
         .over = allClasses,
         .severalExams = rowsOfExams,
         .leftOut = u"总分为 -1 和没有总分的学生不算。"_s + totalOfNobody,
         .formulas = {u"人数 = 总分不小于分数线的人数。上了高线的人，在低线里也算。"_s},
         .settings = {{u"总分上线人数"_s, SettingForm::Lines}}},
    };
}

std::vector<ExplanationText> tablesOfRanks()
{
    return {
        {.report = u"各名次段人数"_s,
         .otherNames = {u"历次各名次段人数对比"_s},
         .counted = u"每个科目、每个总分一张小表：每班年级名次在前若干名、后若干名的人数。"_s,
         .over = allClasses,
         .severalExams = rowsOfExams,
         .leftOut = noRank,
         .formulas = bands,
         .settings = {{u"各名次段人数"_s, SettingForm::Lines}}},
        {.report = u"历次考试进入年级前x名人数"_s,
         .otherNames = {u"历次考试进入年级前x名人数 "_s},
         .counted = u"每个科目、每个总分一张小表：每班历次考试年级名次在前若干名的人数。"_s,
         .over = allClasses,
         .severalExams = rowsOfExams,
         .leftOut = noRank,
         .formulas = bands,
         .settings = {{u"历次考试进入年级前x名人数"_s, SettingForm::Lines}}},
        {.report = u"各名次段均分"_s,
         .otherNames = {},
         .counted = u"每班在各名次段里的人数、平均分，和这个平均分在各班之间的名次。含总分。"_s,
         .over = allClasses,
         .severalExams = lastExam,
         .leftOut = absentInLastBand
                    + u"平均分从不算他们。没有成绩（空）的学生不算。"
                      "段里没有参加考试的学生的班，没有平均分和名次。"_s,
         .formulas =
             {bands[0], bands[1],
              u"平均分 = 段里参加考试的学生的成绩之和 ÷ 他们的人数，保留两位小数；名次按它排，相同则并列。"_s},
         .settings = {{u"各名次段均分"_s, SettingForm::Lines}}},
        {.report = u"综合分析"_s,
         .otherNames = {},
         .counted =
             u"每个科类一个工作簿：学生成绩表、T 分表、这次考试的各张统计表、和其他考试的对比表。"_s,
         .over =
             u"统计表里是学生名单里今天有学生的全部班级，学生成绩表和 T 分表里是有这次考试成绩的全部学生。“类别代码”列表里的选择不起作用，看的是分析设置里的“参与统计的学生类别代码”。"_s,
         .leftOut =
             u"各张表与单独执行统计时相同。学生成绩表里的 -1 写成“缺考”，T 分表里的 -1 不改。"_s,
         .formulas =
             {u"学生成绩表有这次考试各科、各总分的成绩和年级名次，T 分表有它们的 T 分和总分按 T 分排的名次；存过“自定义显示”的，只有存的那些列。"_s,
              u"放进哪些统计表，由分析设置里各项的“加入综合分析”决定；及格率不在其中。"_s},
         .settings = {{u"参与统计的学生类别代码"_s, SettingForm::Plain},
                      {u"进行对比分析的考试"_s, SettingForm::Plain}},
         .categories = Categories::OfAnalysis},
    };
}

std::vector<ExplanationText> scoringColumns()
{
    const QString stream = u"同一次考试、同一科类的全部学生，文科、理科分开。"_s;
    return {
        {.report = u"名次"_s,
         .otherNames = {u"年名"_s, u"班名"_s},
         .counted =
             u"每个科目、每个总分的年级名次（年名）和班级名次（班名），总分另有按 T 分排的年级名次。"_s,
         .over = stream + u"班级名次在本班里排。"_s,
         .leftOut =
             u"缺考的名次是 -1，不占别人的名次。没有成绩（空）的学生与最后一名并列。按 T 分排的名次不去掉缺考。"_s
             + cheated,
         .formulas = {u"分数相同名次相同，后面的名次空出来：1，1，3。"_s},
         .settings = {},
         .categories = Categories::Ignored},
        {.report = u"Z分"_s,
         .otherNames = {},
         .counted = u"每个成绩比平均分高（或低）多少个标准差。"_s,
         .over = stream,
         .leftOut = u"平均分和标准差不含缺考和没有成绩的学生；缺考学生自己的 Z 分按 0 分计算。"_s
                    + cheated,
         .formulas =
             {u"Z = (成绩 - 平均分) ÷ 标准差，标准差除以人数减 1，Z 保留两位小数。"_s,
              u"总分的 Z 分 = 公式里各科 Z 分 ×（满分 ÷ 100）之和；有几个总分时，后一个会把前面几个的也加进去。"_s},
         .settings = {},
         .categories = Categories::Ignored},
        {.report = u"T分"_s,
         .otherNames = {},
         .counted = u"把 Z 分换算成好读的分数，平均水平的学生得到同一个数。"_s,
         .over = stream,
         .leftOut = u"与 Z 分相同：缺考学生自己的 T 分按 0 分计算。"_s,
         .formulas =
             {u"T = 系数 × Z + 常数，用保留两位小数的 Z，T 取整数。改了设置要重新计算总分。"_s,
              u"总分的 T 分 = 公式里各科 T 分 ×（满分 ÷ 100）之和；有几个总分时，后一个会把前面几个的也加进去。"_s},
         .settings = {{u"T分"_s, SettingForm::Conversion}},
         .categories = Categories::Ignored},
    };
}

} // namespace

const std::vector<ExplanationText>& explanationTexts()
{
    static const std::vector<ExplanationText> texts = [] {
        std::vector<ExplanationText> all;
        for (const auto& part : {tablesOfShares(), tablesOfAggregates(), tablesOfRanks()})
            all.insert(all.end(), part.begin(), part.end());
        for (ExplanationText& table : all)
            table.leftOut += noRow;
        for (const ExplanationText& columns : scoringColumns())
            all.push_back(columns);
        return all;
    }();
    return texts;
}

QString categoryRule(Categories categories)
{
    switch (categories) {
    case Categories::Chosen:
        return u"只算“类别代码”列表里选中的类别。"_s;
    case Categories::OfAnalysis:
        return u"只算设置“参与统计的学生类别代码”里的类别。"_s;
    case Categories::Ignored:
        break;
    }
    return u"不分类别，总是全部学生。"_s;
}

} // namespace statistics
