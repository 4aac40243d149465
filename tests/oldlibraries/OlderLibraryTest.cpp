#include "CopiedLibrary.h"
#include "oldlibraries/Converting.h"
#include "support/OldFileWriter.h"
#include "support/PrintQString.h"

using namespace Qt::StringLiterals;
using oldlibraries::OldType;
using support::OldColumnPlan;
using support::OldFileWriter;

namespace {

/// A library as an early version might have made it: without most tables, with other names where
/// none was ever asked for, and with settings of which one is missing and one was removed.
void writeOlderLibrary(const QString& path)
{
    OldFileWriter file(path);
    OldColumnPlan id{u"ID"_s, OldType::Long};
    id.isAutoNumber = true;
    file.addTable(
        u"信息表"_s,
        {id, {u"班级"_s, OldType::Double}, {u"学号"_s, OldType::Double}, {u"姓名"_s}, {u"科类"_s}});
    file.addRow({4, 1.0, 1.0, u"甲"_s, u"理"_s});
    file.addTable(u"成绩表"_s, {{u"id"_s, OldType::Long},
                                {u"班级"_s, OldType::Double},
                                {u"学号"_s, OldType::Double},
                                {u"姓名"_s},
                                {u"科类"_s},
                                {u"考试名称"_s},
                                {u"语文"_s, OldType::Single},
                                {u"语文年名"_s, OldType::Long},
                                {u"语文班名"_s, OldType::Long}});
    file.addRow({4, 1.0, 1.0, u"甲"_s, u"理"_s, u"期中"_s, 90.5F, 1, 1});
    file.addTable(u"考试名称表"_s, {{u"考试编号"_s, OldType::Integer},
                                    {u"考试名称"_s},
                                    {u"科类"_s},
                                    {u"考试日期"_s},
                                    {u"语文"_s, OldType::Single}});
    file.addRow({1, u"期中"_s, u"理"_s, u"2009-11-12"_s, 150.0F});
    file.addTable(u"设置表"_s, {{u"ID"_s, OldType::Long},
                                {u"名称"_s},
                                {u"设置"_s},
                                {u"加入综合分析"_s},
                                {u"设置条件"_s},
                                {u"可选"_s}});
    file.addRow({1, u"各科优秀率"_s, u"[0.9,1]"_s, u"是"_s, u"点此设置各科条件"_s, u""_s});
    file.addRow({3, u"T分"_s, u"15z+70"_s, u"否"_s, u""_s, u""_s});
    file.save();
}

} // namespace

using OlderLibrary = tests::Converting;

TEST_F(OlderLibrary, WorksOnceItIsConverted)
{
    writeOlderLibrary(request.oldPath);
    const auto report = convert();
    ASSERT_TRUE(report.has_value());
    const QString findings = findingTexts(report->findings);
    for (const QString& line :
         {u"颜色表|0|||旧库没有这个表，已经建立，内容是新成绩库的 16 行默认值。"_s,
          u"信息表|0|照片名||旧库没有这一列，已经添加，没有值。"_s,
          u"考试名称表|0|备注||旧库没有这一列，已经添加，没有值。"_s,
          u"成绩表|0|语文Z分||考试名称表里有“语文”，这里缺少这一列，已经添加，没有值。"_s,
          u"设置表|0|自定义||旧库没有这一列，已经添加，没有值。"_s,
          u"设置表|2|名称|T分|ID 从“3”改为 1。"_s, u"设置表|1|名称|各科优秀率|ID 从“1”改为 5。"_s,
          u"设置表|0|名称|低分段|旧库没有这项设置，已经加上默认值，ID 是 4。"_s})
        EXPECT_TRUE(findings.contains(line)) << qPrintable(line) << '\n' << qPrintable(findings);

    const support::ScriptedDialogs dialogs;
    library::ScoreLibrary scores(paths);
    scores.LibPath = request.newPath;
    scores.OpenDB();
    EXPECT_EQ(scores.catalogue.AllColumns, QStringList{u"语文"_s});
    EXPECT_EQ(scores.catalogue.ExamList, QStringList{u"期中"_s});
    EXPECT_EQ(scores.catalogue.getKMMF(u"期中"_s, u"理"_s, u"语文"_s), 150);
    EXPECT_EQ(scores.settings.GetSZ(u"T分"_s), u"15z+70"_s);
    EXPECT_EQ(scores.settings.GetSZ(u"低分段"_s), u"[0,0.4)"_s);
    EXPECT_EQ(scores.students.GetGRXX(4), u"甲 1 班 1 号 ，理"_s);
    EXPECT_EQ(dialogs.shown, QStringList());
    QStringList columns;
    for (const database::Column& column : scores.Conn.columns(u"考试名称表"_s))
        columns.append(column.name);
    EXPECT_EQ(columns.join(u' '), u"考试编号 考试名称 科类 考试日期 备注 语文"_s);
}
