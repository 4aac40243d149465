#include "SettingsFixture.h"

namespace {

using configuration::AnalysisSettings;
using configuration::SubjectConditions;

const QString excellent = u"各科优秀率"_s;

class Conditions : public SettingsTest
{
protected:
    SubjectConditions conditions = conditionsOf(excellent);

    void edit(int row, const QStringList& cells)
    {
        for (int i = 0; i < cells.size(); ++i)
            conditions.conditions.setTextMatrix(row, SubjectConditions::FirstOperatorCol + i,
                                                cells[i]);
    }

    QString value(int row) const
    {
        return settings.settings.TextMatrix(row, AnalysisSettings::ValueCol);
    }
};

TEST_F(Conditions, HaveHeadingsAndFixedNamesOfStreamAndSubject)
{
    EXPECT_EQ(grid::gridText(conditions.conditions).section(u'\n', 0, 0),
              u"科类\t科目\t条件\t分数\t条件\t分数"_s);
    EXPECT_EQ(conditions.conditions.FixedRows, 1);
    EXPECT_EQ(conditions.conditions.FixedCols, 2);
    EXPECT_EQ(conditions.conditions.ColAlignment(0), 1);
    EXPECT_EQ(SubjectConditions::operators(), (QStringList{u">"_s, u">="_s, u"<"_s, u"<="_s}));
}

TEST_F(Conditions, TheSettingsNameIsReadBackFromTheCaption)
{
    EXPECT_EQ(SubjectConditions::captionOf(excellent), u"设置  各科优秀率"_s);
    EXPECT_EQ(SubjectConditions::nameIn(u"设置  各科优秀率"_s), excellent);
    const QString odd = u"  a' --\n"_s + QString(10000, u'名');
    EXPECT_EQ(SubjectConditions::nameIn(SubjectConditions::captionOf(odd)), odd);
}

TEST_F(Conditions, AreSavedAsTheyStandAndTheSettingSaysThatItUsesThem)
{
    edit(1, {u"<"_s, u"60"_s, u">="_s, u""_s});
    EXPECT_TRUE(conditions.isChanged());
    EXPECT_TRUE(conditions.save(excellent, settings));
    EXPECT_EQ(storedConditions(), u"各科优秀率|文|语文|<|60|>=| / "
                                  "各科优秀率|文|数学|>=|127.5|<=|150 / "
                                  "各科优秀率|理|语文|>=|127.5|<=|150 / "
                                  "各科优秀率|理|数学|>=|85|<=|100"_s);
    EXPECT_EQ(value(settings.rowOf(excellent)), u"(使用自定义数据)"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"设置保存成功！"_s});
    EXPECT_FALSE(conditions.isChanged());
    EXPECT_TRUE(settings.isChanged());
    EXPECT_EQ(stored(excellent), u"5|各科优秀率|[0.85,1]|是|0"_s);
}

TEST_F(Conditions, ASecondSaveUpdatesTheRowsAndAddsNone)
{
    conditions.save(excellent, settings);
    edit(4, {u">"_s, u"1"_s, u"<"_s, u"2"_s});
    conditions.save(excellent, settings);
    EXPECT_EQ(test.rows(u"select count(*) from 详细设置表"_s), u"4"_s);
    EXPECT_EQ(test.scores.settings.GetXXSZ(excellent, u"理"_s, u"数学"_s), u"数学>1 and 数学<2"_s);
}

TEST_F(Conditions, OfOtherSettingsStay)
{
    test.execute(u"insert into 详细设置表 values ('高分段','文','语文','>','1','<','2')"_s);
    conditions.save(excellent, settings);
    EXPECT_EQ(test.rows(u"select * from 详细设置表 where 设置名称='高分段'"_s),
              u"高分段|文|语文|>|1|<|2"_s);
    conditions.remove(excellent);
    EXPECT_EQ(storedConditions(), u"高分段|文|语文|>|1|<|2"_s);
}

TEST_F(Conditions, ThatWereStoredWriteTheHeadingInPlaceOfTheSetting)
{
    conditions.save(excellent, settings);
    set(excellent, u"自定义"_s, u"1"_s);
    SubjectConditions kept = conditionsOf(excellent);
    EXPECT_EQ(kept.SetRow, 0);
    kept.save(excellent, settings);
    EXPECT_EQ(value(0), u"(使用自定义数据)"_s);
    EXPECT_FALSE(settings.isChanged());
}

TEST_F(Conditions, RemovedOnesLeaveTheGridAndTheSettingAsTheyAre)
{
    conditions.save(excellent, settings);
    test.dialogs.shown.clear();
    EXPECT_TRUE(conditions.remove(excellent));
    EXPECT_EQ(storedConditions(), QString());
    EXPECT_EQ(conditions.conditions.Rows(), 5);
    EXPECT_EQ(value(settings.rowOf(excellent)), u"(使用自定义数据)"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"保存设置成功！"_s});
    EXPECT_EQ(test.scores.settings.GetXXSZ(excellent, u"文"_s, u"语文"_s), QString());
}

TEST_F(Conditions, OfANameWithAnApostropheAreRefusedAndNothingSaysThatTheyWereSaved)
{
    const QString name = u"优'秀"_s;
    settings.settings.setTextMatrix(5, AnalysisSettings::NameCol, name);
    EXPECT_FALSE(conditions.save(name, settings));
    EXPECT_FALSE(conditions.remove(name));
    EXPECT_EQ(storedConditions(), QString());
    EXPECT_EQ(value(5), u"[0.85,1]"_s);
    EXPECT_EQ(test.dialogs.failures.size(), test.dialogs.shown.size());
    EXPECT_TRUE(
        test.dialogs.failures.first().endsWith(u" - Private Sub Command1_Click/FormXiangXiSZ"_s));
    EXPECT_TRUE(
        test.dialogs.failures.last().endsWith(u" - Private Sub Command3_Click/FormXiangXiSZ"_s));
    settings.settings.setTextMatrix(5, AnalysisSettings::FlagCol, u"1"_s);
    EXPECT_EQ(settings.SzGekE(5).conditions.Rows(), 1);
    EXPECT_TRUE(test.dialogs.failures.last().endsWith(u" - Sub SzGekE/FormSet"_s));
}

TEST_F(Conditions, AScoreTooLongForItsFieldIsToldAndTheRestIsSaved)
{
    edit(1, {u">"_s, QString(10000, u'9'), u"<"_s, u"5"_s});
    EXPECT_TRUE(conditions.save(excellent, settings));
    EXPECT_EQ(storedConditions().section(u" / "_s, 0, 1),
              u"各科优秀率|文|语文|>|NULL|<|5 / 各科优秀率|文|数学|>=|127.5|<=|150"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_EQ(test.dialogs.shown.last(), u"设置保存成功！"_s);
}

TEST_F(Conditions, AreFoundByStreamAndSubject)
{
    EXPECT_EQ(conditions.rowOf(u"理"_s, u"语文"_s), 3);
    EXPECT_EQ(conditions.rowOf(u"理"_s, u"总分"_s), -1);
}

TEST_F(Conditions, InALibraryThatCannotBeWrittenAreNotSaidToBeSaved)
{
    test.scores.Conn.Close();
    EXPECT_FALSE(conditions.save(excellent, settings));
    EXPECT_FALSE(conditions.remove(excellent));
    EXPECT_EQ(test.dialogs.shown.size(), test.dialogs.failures.size());
    EXPECT_EQ(value(settings.rowOf(excellent)), u"[0.85,1]"_s);
}

} // namespace
