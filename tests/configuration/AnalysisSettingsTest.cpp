#include "SettingsFixture.h"
#include "statistics/Reports.h"
#include "support/OtherProgram.h"

namespace {

using configuration::AnalysisSettings;
using configuration::SubjectConditions;

constexpr auto saved = "设置保存成功！";
const QString custom = u"(使用自定义数据)"_s;

TEST_F(SettingsTest, TheGridHasARowForEachSettingBelowTheNamesOfTheFields)
{
    const grid::FlexGrid& grid = settings.settings;
    EXPECT_EQ(grid.Rows(), 22);
    EXPECT_EQ(grid.Cols(), 6);
    EXPECT_EQ(grid.FixedRows, 0);
    EXPECT_EQ(grid.ColAlignment(0), 1);
    EXPECT_EQ(grid.ColWidth(4), 0);
    EXPECT_EQ(grid.ColWidth(5), 0);
    EXPECT_EQ(grid::gridText(grid).section(u'\n', 0, 1),
              u"名称\t设置\t加入综合分析\t各科条件\t\t\nT分\t10z+50\t否\t\t\t0"_s);
    EXPECT_EQ(row(u"高分段"_s), u"高分段|[0.9,1]|是|点此设置各科条件||0"_s);
    EXPECT_FALSE(settings.isChanged());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(SettingsTest, RowsComeByIdHoweverTheyStandInTheTable)
{
    test.execute(u"update 设置表 set ID=0 where 名称='进行对比分析的考试'"_s);
    settings.load();
    EXPECT_EQ(settings.rowOf(u"进行对比分析的考试"_s), 1);
}

TEST_F(SettingsTest, ARowWithTheFlagShowsThatItUsesConditionsBySubject)
{
    set(u"各科优秀率"_s, u"自定义"_s, u"1"_s);
    EXPECT_EQ(row(u"各科优秀率"_s), u"各科优秀率|(使用自定义数据)|是|点此设置各科条件||1"_s);
    set(u"各科优秀率"_s, u"自定义"_s, u"null"_s);
    EXPECT_EQ(row(u"各科优秀率"_s), u"各科优秀率|[0.85,1]|是|点此设置各科条件||"_s);
}

TEST_F(SettingsTest, ListsOfferWhatTheLibraryHoldsNow)
{
    EXPECT_EQ(settings.choices(settings.rowOf(u"参与统计的学生类别代码"_s)),
              (QStringList{u"1"_s, u"2"_s}));
    EXPECT_EQ(settings.choices(settings.rowOf(u"进行对比分析的考试"_s)),
              (QStringList{u"摸底"_s, u"期中"_s}));
    EXPECT_EQ(settings.choices(settings.rowOf(u"各科平均分"_s)),
              (QStringList{u"使用教师名单"_s, u"不使用教师名单"_s}));
    test.addStudent(1, 2, u"丙"_s, u"文"_s, 7);
    settings.load();
    EXPECT_EQ(settings.choices(settings.rowOf(u"参与统计的学生类别代码"_s)),
              (QStringList{u"1"_s, u"2"_s, u"7"_s}));
}

TEST_F(SettingsTest, ACategoryThatIsNullIsNoChoice)
{
    test.execute(u"update 信息表 set 类别代码=null where 姓名='乙'"_s);
    settings.load();
    EXPECT_EQ(settings.choices(settings.rowOf(u"参与统计的学生类别代码"_s)), QStringList{u"1"_s});
    test.execute(u"update 信息表 set 类别代码=null"_s);
    settings.load();
    EXPECT_EQ(settings.choices(settings.rowOf(u"参与统计的学生类别代码"_s)), QStringList());
}

TEST_F(SettingsTest, StoredChoicesStayWhereTheLibraryHasNone)
{
    set(u"参与统计的学生类别代码"_s, u"选项"_s, u"'8,,9'"_s);
    test.execute(u"delete from 信息表"_s);
    settings.load();
    EXPECT_EQ(settings.choices(settings.rowOf(u"参与统计的学生类别代码"_s)),
              (QStringList{u"8"_s, u"9"_s}));
}

TEST_F(SettingsTest, AListEditedRowWithoutChoicesOffersNone)
{
    set(u"各科平均分"_s, u"选项"_s, u"null"_s);
    EXPECT_EQ(settings.choices(settings.rowOf(u"各科平均分"_s)), QStringList());
}

TEST_F(SettingsTest, ThreeRowsAreKnownAsListsByTheirNamesAlone)
{
    for (int row = 0; row < settings.settings.Rows(); ++row) {
        const QString& name = settings.settings.TextMatrix(row, AnalysisSettings::NameCol);
        const bool isList = name == u"参与统计的学生类别代码"_s || name == u"进行对比分析的考试"_s
                            || name == u"各科平均分"_s;
        EXPECT_EQ(settings.isListEdited(row), isList) << name.toStdString();
    }
}

TEST_F(SettingsTest, FlippingTurnsYesToNoAndAnythingElseToYesButForTheFirstRow)
{
    const auto cell = [this](int row) {
        return settings.settings.TextMatrix(row, AnalysisSettings::AnalysisCol);
    };
    EXPECT_TRUE(settings.flip(5));
    EXPECT_EQ(cell(5), u"否"_s);
    EXPECT_TRUE(settings.flip(5));
    EXPECT_EQ(cell(5), u"是"_s);
    settings.settings.setTextMatrix(6, AnalysisSettings::AnalysisCol, u"随便"_s);
    EXPECT_TRUE(settings.flip(6));
    EXPECT_EQ(cell(6), u"是"_s);
    EXPECT_TRUE(settings.flip(2));
    EXPECT_EQ(cell(2), u"是"_s);
    EXPECT_FALSE(settings.flip(1));
    EXPECT_FALSE(settings.flip(0));
    EXPECT_EQ(cell(1), u"否"_s);
    EXPECT_EQ(cell(0), u"加入综合分析"_s);
}

TEST_F(SettingsTest, TypingClearsTheFlagAndTakingItBackRestoresIt)
{
    set(u"各科优秀率"_s, u"自定义"_s, u"1"_s);
    const int row = settings.rowOf(u"各科优秀率"_s);
    settings.noteFlag(row);
    settings.clearFlag(row);
    EXPECT_EQ(settings.settings.TextMatrix(row, AnalysisSettings::FlagCol), u"0"_s);
    settings.restoreFlag(row);
    EXPECT_EQ(settings.settings.TextMatrix(row, AnalysisSettings::FlagCol), u"1"_s);
    EXPECT_FALSE(settings.isChanged());
}

TEST_F(SettingsTest, ThatCouldNotBeReadAreNotSavedOverTheStoredOnes)
{
    const auto stored = [this] { return test.rows(u"select ID,名称,设置 from 设置表"_s); };
    const QString before = stored();
    {
        support::OtherProgram other(test.scores.Conn.path());
        other.run("begin exclusive");
        EXPECT_FALSE(settings.load());
    }
    EXPECT_EQ(settings.settings.Rows(), 1);
    EXPECT_FALSE(settings.save());
    EXPECT_EQ(test.dialogs.shown.last(), u"分析设置没有读出来，没有保存。"_s);
    EXPECT_TRUE(settings.load());
    EXPECT_TRUE(settings.save());
    EXPECT_EQ(stored(), before);
}

TEST_F(SettingsTest, ConditionsThatCouldNotBeReadAreNotSaved)
{
    const int row = settings.rowOf(u"各科优秀率"_s);
    support::OtherProgram other(test.scores.Conn.path());
    other.run("begin exclusive");
    configuration::SubjectConditions conditions = settings.SzGekE(row);
    EXPECT_FALSE(conditions.isRead());
    EXPECT_EQ(conditions.conditions.Rows(), 1);
    EXPECT_FALSE(conditions.save(u"各科优秀率"_s, settings));
    EXPECT_EQ(test.dialogs.shown.last(), u"各科条件没有读出来，没有保存。"_s);
}

TEST_F(SettingsTest, WhatWasTypedIsStoredAsItStands)
{
    int told = 0;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, [&] { ++told; });
    set(u"各科优秀率"_s, u"自定义"_s, u"1"_s);
    settings.setValue(settings.rowOf(u"各科优秀率"_s), u"[0.8，1]"_s);
    settings.flip(settings.rowOf(u"各科良好率"_s));
    EXPECT_TRUE(settings.isChanged());
    EXPECT_TRUE(settings.save());
    EXPECT_EQ(stored(u"各科优秀率"_s), u"5|各科优秀率|[0.8，1]|是|0"_s);
    EXPECT_EQ(stored(u"各科良好率"_s), u"6|各科良好率|[0.75,0.85)|否|0"_s);
    EXPECT_EQ(test.rows(u"select count(*) from 设置表"_s), u"21"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{QString::fromUtf8(saved)});
    EXPECT_EQ(told, 0) << "the workbench keeps what is chosen on it";
    EXPECT_FALSE(settings.isChanged());
}

TEST_F(SettingsTest, ASaveWithoutAChangeLeavesEveryRowAsItWas)
{
    const QString sql =
        u"select ID, 名称, 设置, 加入综合分析, 各科条件, 自定义 from 设置表 order by ID"_s;
    const QString before = test.rows(sql);
    settings.save();
    EXPECT_EQ(test.rows(sql), before);
}

TEST_F(SettingsTest, TheHeadingOfTheValuesCanBeTypedOverAndIsNotSaved)
{
    settings.setValue(0, u"数值"_s);
    EXPECT_EQ(settings.settings.TextMatrix(0, AnalysisSettings::FlagCol), u"0"_s);
    EXPECT_FALSE(settings.isChanged());
    settings.save();
    EXPECT_EQ(test.rows(u"select count(*) from 设置表 where 设置='数值'"_s), u"0"_s);
}

TEST_F(SettingsTest, AnEmptyFlagStaysUnwritten)
{
    set(u"各科优秀率"_s, u"自定义"_s, u"null"_s);
    settings.flip(settings.rowOf(u"各科优秀率"_s));
    settings.save();
    EXPECT_EQ(stored(u"各科优秀率"_s), u"5|各科优秀率|[0.85,1]|否|NULL"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList());
}

TEST_F(SettingsTest, ALibraryWithGapsKeepsTheIdsOfItsRows)
{
    test.execute(u"delete from 设置表 where ID in (7, 8)"_s);
    test.execute(u"update 设置表 set ID=99 where 名称='进行对比分析的考试'"_s);
    settings.load();
    settings.setValue(settings.rowOf(u"考试人数"_s), u"甲"_s);
    settings.save();
    EXPECT_EQ(stored(u"考试人数"_s), u"18|考试人数|甲|是|0"_s);
    EXPECT_EQ(stored(u"进行对比分析的考试"_s), u"99|进行对比分析的考试|(全部)|否|0"_s);
    EXPECT_EQ(test.rows(u"select count(*) from 设置表"_s), u"19"_s);
}

TEST_F(SettingsTest, RowsThatShareAnIdOrHaveNoneAreSavedToTheirOwnPlaces)
{
    test.execute(u"update 设置表 set ID=6 where 名称='各科优秀率'"_s);
    test.execute(u"update 设置表 set ID=null where 名称 in ('T分', '高分段')"_s);
    settings.load();
    settings.setValue(settings.rowOf(u"各科良好率"_s), u"[0.7,0.8)"_s);
    settings.setValue(settings.rowOf(u"高分段"_s), u"[0.95,1]"_s);
    settings.save();
    EXPECT_EQ(test.rows(u"select count(*), count(distinct 名称) from 设置表"_s), u"21|21"_s);
    EXPECT_EQ(stored(u"各科优秀率"_s), u"6|各科优秀率|[0.85,1]|是|0"_s);
    EXPECT_EQ(stored(u"各科良好率"_s), u"6|各科良好率|[0.7,0.8)|是|0"_s);
    EXPECT_EQ(stored(u"高分段"_s), u"NULL|高分段|[0.95,1]|是|0"_s);
    EXPECT_EQ(stored(u"T分"_s), u"NULL|T分|10z+50|否|0"_s);
}

TEST_F(SettingsTest, ARowThatVanishedMeanwhileIsAddedUnderItsId)
{
    test.execute(u"delete from 设置表 where 名称='各科优秀率'"_s);
    settings.save();
    EXPECT_EQ(stored(u"各科优秀率"_s), u"5|各科优秀率|[0.85,1]|是|0"_s);
}

TEST_F(SettingsTest, AHostileTextIsStoredAndReadBackAsTyped)
{
    const QString hostile = u"') -- \"[\n\t"_s + QString(10000, u'数');
    settings.setValue(settings.rowOf(u"考试人数"_s), hostile);
    settings.save();
    EXPECT_EQ(test.scores.settings.GetSZ(u"考试人数"_s), hostile);
    settings.load();
    EXPECT_EQ(settings.settings.TextMatrix(settings.rowOf(u"考试人数"_s), 1), hostile);
}

/// The table as libraries had it before its values were memos.
class ShortFields : public SettingsTest
{
protected:
    ShortFields()
    {
        test.execute(u"alter table 设置表 rename to 旧设置"_s);
        test.execute(u"create table 设置表 (ID Long INTEGER, 名称 text(50) collate rtrim, "
                     "设置 text(50), 加入综合分析 text(50), 各科条件 text(50), 选项 text(20), "
                     "自定义 Long INTEGER)"_s);
        test.execute(u"insert into 设置表 select * from 旧设置 where length(选项)<21"_s);
        test.execute(u"drop table 旧设置"_s);
        settings.load();
    }
};

TEST_F(ShortFields, ASettingThatDoesNotFitIsToldAndTheOtherFieldsAreSaved)
{
    const int row = settings.rowOf(u"总分上线人数"_s);
    settings.setValue(row, QString(60, u'5'));
    settings.flip(row);
    EXPECT_TRUE(settings.save());
    EXPECT_EQ(stored(u"总分上线人数"_s), u"14|总分上线人数|文=550,480,400||理=530,450,370|否|0"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormSet"_s));
    EXPECT_EQ(test.dialogs.shown.last(), QString::fromUtf8(saved));
}

TEST_F(ShortFields, ChoicesThatTheLibraryOffersAnyhowNeedNotFit)
{
    for (int exam = 3; exam < 12; ++exam)
        test.addExam(u"第%1次考试"_s.arg(exam), u"文"_s, exam, {{u"语文"_s, 100}});
    settings.load();
    EXPECT_TRUE(settings.save());
    EXPECT_EQ(test.dialogs.shown, QStringList{QString::fromUtf8(saved)});
    EXPECT_EQ(settings.choices(settings.rowOf(u"进行对比分析的考试"_s)).size(), 11);
}

TEST_F(SettingsTest, ALibraryThatCannotBeWrittenIsToldAndNothingCountsAsSaved)
{
    settings.setValue(settings.rowOf(u"考试人数"_s), u"甲"_s);
    test.scores.Conn.Close();
    EXPECT_FALSE(settings.save());
    EXPECT_TRUE(settings.isChanged());
    ASSERT_FALSE(test.dialogs.failures.isEmpty());
    EXPECT_FALSE(test.dialogs.shown.contains(QString::fromUtf8(saved)));
}

TEST_F(SettingsTest, RowsThatAreAllRefusedAreNotSaidToBeSaved)
{
    settings.flip(settings.rowOf(u"高分段"_s));
    test.execute(u"drop table 设置表"_s);
    EXPECT_FALSE(settings.save());
    EXPECT_TRUE(settings.isChanged());
    EXPECT_EQ(test.dialogs.shown, test.dialogs.failures);
    EXPECT_TRUE(test.dialogs.failures.last().endsWith(u" - Private Sub Command1_Click/FormSet"_s));
}

TEST_F(SettingsTest, ConditionsAreSharesOfTheFullMarksOfTheLatestExam)
{
    settings.setValue(settings.rowOf(u"各科优秀率"_s), u"[0.8,1]"_s);
    const SubjectConditions conditions = conditionsOf(u"各科优秀率"_s);
    EXPECT_EQ(rowsOf(conditions), u"文 语文 >= 96 <= 120/文 数学 >= 120 <= 150/"
                                  "理 语文 >= 120 <= 150/理 数学 >= 80 <= 100/"_s);
    EXPECT_EQ(conditions.SetRow, 5);
    EXPECT_FALSE(conditions.isChanged());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(SettingsTest, BracketsGiveTheOperatorsAndAnUpperBoundOfNoughtIsOne)
{
    settings.setValue(settings.rowOf(u"各科差生率"_s), u"(0.25,0)"_s);
    EXPECT_EQ(rowsOf(conditionsOf(u"各科差生率"_s)).section(u'/', 0, 0), u"文 语文 > 30 < 120"_s);
}

TEST_F(SettingsTest, SharesAreReckonedInDecimalsAsTheyAreTyped)
{
    test.execute(u"update 考试名称表 set 语文=90.1 where 科类='文'"_s);
    settings.setValue(settings.rowOf(u"各科差生率"_s), u"[0.1,0.7)"_s);
    EXPECT_EQ(rowsOf(conditionsOf(u"各科差生率"_s)).section(u'/', 0, 0),
              u"文 语文 >= 9.01 < 63.07"_s);
}

TEST_F(SettingsTest, AStreamWithoutAnExamReckonsWithAHundred)
{
    test.execute(u"delete from 考试名称表 where 科类='文'"_s);
    settings.setValue(settings.rowOf(u"各科优秀率"_s), u"[0.85,1]"_s);
    EXPECT_EQ(rowsOf(conditionsOf(u"各科优秀率"_s)).section(u'/', 0, 1),
              u"文 语文 >= 85 <= 100/文 数学 >= 85 <= 100"_s);
}

TEST_F(SettingsTest, ALibraryWithOneStreamGivesARowForEachSubject)
{
    test.execute(u"delete from 信息表 where 科类='文'"_s);
    test.reload();
    EXPECT_EQ(conditionsOf(u"各科优秀率"_s).conditions.Rows(), 3);
}

TEST_F(SettingsTest, AValueWithoutACommaReadsAsNoughtToOneBehindItsFailure)
{
    for (const QString& value : {u"[0.6]"_s, u"[]"_s, u"六成"_s}) {
        test.dialogs.failures.clear();
        settings.setValue(settings.rowOf(u"高分段"_s), value);
        const SubjectConditions conditions = conditionsOf(u"高分段"_s);
        const bool closed = value.startsWith(u'[');
        EXPECT_EQ(rowsOf(conditions).section(u'/', 0, 0),
                  closed ? u"文 语文 >= 0 <= 120"_s : u"文 语文 > 0 < 120"_s);
        ASSERT_EQ(test.dialogs.failures.size(), 1);
        EXPECT_EQ(test.dialogs.failures[0],
                  u"条件“%1”不是区间，缺少逗号。 - Sub SzGekE/FormSet"_s.arg(value));
    }
}

TEST_F(SettingsTest, TheTextOfCustomDataReadsLikewiseWhereNothingIsStored)
{
    set(u"高分段"_s, u"设置"_s, u"'(使用自定义数据)'"_s);
    EXPECT_EQ(rowsOf(conditionsOf(u"高分段"_s)).section(u'/', 0, 0), u"文 语文 > 0 < 120"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Sub SzGekE/FormSet"_s));
    EXPECT_EQ(test.dialogs.questions, QStringList());
}

TEST_F(SettingsTest, ARowWithTheFlagShowsItsStoredConditions)
{
    set(u"高分段"_s, u"自定义"_s, u"1"_s);
    test.execute(u"insert into 详细设置表 values ('高分段','文','语文','>','85.5','<','')"_s);
    test.execute(u"insert into 详细设置表 values ('低分段','文','语文','>','1','<','2')"_s);
    const SubjectConditions conditions = conditionsOf(u"高分段"_s);
    EXPECT_EQ(rowsOf(conditions), u"文 语文 > 85.5 < /"_s);
    EXPECT_EQ(conditions.SetRow, 0);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(SettingsTest, ConditionsThatWereSavedWithoutTheFlagAreCountedAndOfferedBeforeTheyAreLost)
{
    set(u"高分段"_s, u"设置"_s, u"'(使用自定义数据)'"_s);
    test.execute(u"insert into 详细设置表 values ('高分段','文','语文','>=','85','<=','120')"_s);
    test.dialogs.expect(u"“高分段”有 1 条已经保存的各科条件。"_s, u"显示已经保存的条件"_s);
    EXPECT_EQ(rowsOf(conditionsOf(u"高分段"_s)), u"文 语文 >= 85 <= 120/"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList());
    EXPECT_EQ(test.dialogs.safeOf(u"已经保存的各科条件"_s), u"显示已经保存的条件"_s);
    EXPECT_EQ(test.dialogs.shown.last(),
              u"各科条件: “高分段”有 1 条已经保存的各科条件。\n\n"
              "按区间重新计算时，“(使用自定义数据)”不是区间，各科条件都成为 0 到满分；"
              "再按“确定”，已经保存的条件就被覆盖。"_s);
    test.dialogs.expect(u"“高分段”有 1 条已经保存的各科条件。"_s, u"按区间重新计算"_s);
    const SubjectConditions anew = conditionsOf(u"高分段"_s);
    EXPECT_EQ(anew.conditions.Rows(), 5);
    EXPECT_EQ(rowsOf(anew).section(u'/', 0, 0), u"文 语文 > 0 < 120"_s);
    EXPECT_EQ(test.dialogs.failures.size(), 1);
}

TEST_F(SettingsTest, TheCountStandsBehindANameThatLooksLikeAPlaceForIt)
{
    test.execute(u"insert into 详细设置表(设置名称) values ('高%2段')"_s);
    test.execute(u"update 设置表 set 设置='(使用自定义数据)', 名称='高%2段' where ID=3"_s);
    settings.load();
    test.dialogs.expect(u"“高%2段”有 1 条已经保存的各科条件。"_s, u"显示已经保存的条件"_s);
    EXPECT_EQ(conditionsOf(u"高%2段"_s).conditions.Rows(), 2);
}

TEST_F(SettingsTest, OnlyRowsWithTheLinkLeadToConditions)
{
    EXPECT_TRUE(settings.offersConditions(settings.rowOf(u"低分段"_s)));
    EXPECT_FALSE(settings.offersConditions(settings.rowOf(u"考试人数"_s)));
    EXPECT_FALSE(settings.offersConditions(0));
}

TEST_F(SettingsTest, AValueThatItsReportCannotReadIsSaid)
{
    const int row = settings.rowOf(u"总分上线人数"_s);
    EXPECT_EQ(settings.complaint(row), QString());
    settings.setValue(row, u"文=5"_s);
    EXPECT_EQ(settings.complaint(row), u"条件设置不正确！缺少分隔符  ||  \n文=5"_s);
}

TEST_F(SettingsTest, WithoutItsTableFillingAndSavingShowTheirTags)
{
    test.execute(u"drop table 设置表"_s);
    settings.load();
    ASSERT_FALSE(test.dialogs.failures.isEmpty());
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Private Sub Form_Load/FormSet"_s));
    test.dialogs.failures.clear();
    settings.save();
    for (const QString& failure : test.dialogs.failures)
        EXPECT_TRUE(failure.endsWith(u" - Private Sub Command1_Click/FormSet"_s));
}

/// Counts of 各科优秀率 in 语文 of class 1, whose only student has 100 of 120.
class RateAfterASave : public SettingsTest
{
protected:
    RateAfterASave() { test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 100}}); }

    QString count()
    {
        statistics::ReportContext context(test.scores);
        grid::FlexGrid grid;
        QString exams = u"期中"_s;
        statistics::TJGK4l(context, exams, u"各科优秀率"_s, grid, statistics::Transfer::GridOnly);
        return grid.TextMatrix(3, 1);
    }

    void type(const QString& value)
    {
        settings.setValue(settings.rowOf(u"各科优秀率"_s), value);
        settings.save();
    }
};

TEST_F(RateAfterASave, AThresholdThatWasChangedCountsAndSoDoConditionsInItsPlace)
{
    EXPECT_EQ(count(), u"0"_s);
    type(u"[0.8,1]"_s);
    EXPECT_EQ(count(), u"1"_s);
    SubjectConditions conditions = conditionsOf(u"各科优秀率"_s);
    conditions.conditions.setTextMatrix(1, SubjectConditions::FirstScoreCol, u"101"_s);
    conditions.save(u"各科优秀率"_s, settings);
    EXPECT_EQ(count(), u"1"_s) << "not before 确定 of the settings";
    settings.save();
    EXPECT_EQ(stored(u"各科优秀率"_s), u"5|各科优秀率|(使用自定义数据)|是|0"_s);
    EXPECT_EQ(count(), u"0"_s);
    conditions.conditions.setTextMatrix(1, SubjectConditions::FirstScoreCol, u"99.5"_s);
    conditions.save(u"各科优秀率"_s, settings);
    EXPECT_EQ(count(), u"1"_s);
    type(u"[0.9,1]"_s);
    EXPECT_EQ(count(), u"0"_s);
}

} // namespace
