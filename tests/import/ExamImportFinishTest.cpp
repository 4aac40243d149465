#include <gtest/gtest.h>

#include "ExamImportFixture.h"
#include "scoring/Scoring.h"

namespace {

class ExamImportFinish : public ExamImportFixture
{
protected:
    /// 王芳 and 陈静 sat 语文 and 数学.
    void twoStudents()
    {
        sheet({heads({u"语文"_s, u"数学"_s}),
               {1, 1, u"王芳"_s, 60, 50},
               {1, 2, u"陈静"_s, 80, 50.5}});
    }

    /// No student is known, nor any stream.
    void forgetStudents()
    {
        library.execute(u"delete from 信息表"_s);
        library.reload();
    }

    const QString derived = u"语文Z分,语文T分,总分,语文年名"_s;
};

TEST_F(ExamImportFinish, TellsWhereItStands)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    run();
    EXPECT_EQ(progress.texts,
              (QStringList{u"导入数据..."_s, u"导入完成，计算排名..."_s, QString()}));
}

TEST_F(ExamImportFinish, TheScoringIsToldInTheSameWords)
{
    twoStudents();
    request.afterwards = importing::Afterwards::Score;
    run();
    EXPECT_EQ(progress.texts,
              (QStringList{u"导入数据..."_s, u"导入完成，计算排名..."_s, QString()}));
}

TEST_F(ExamImportFinish, TicksTheScoring)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 88}, {1, 2, u"陈静"_s, 90}});
    request.afterwards = importing::Afterwards::Score;
    run();
    EXPECT_EQ(scoreRows(u"姓名,语文年名,语文班名"_s), u"王芳|2|2 / 陈静|1|1"_s);
}

TEST_F(ExamImportFinish, WithoutTheTickNothingIsScored)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 88}});
    run();
    EXPECT_EQ(scoreRows(u"语文年名"_s), u"NULL"_s);
}

TEST_F(ExamImportFinish, AnExamOfNobodyIsScoredWithAMessageForEachTotalAndStream)
{
    sheet({heads({u"语文"_s})});
    request.afterwards = importing::Afterwards::Score;
    EXPECT_EQ(run(), importing::ImportResult::Finished);
    EXPECT_EQ(library.rows(u"select 考试名称,科类 from 考试名称表"_s), u"期中|1"_s);
    const QString message = u"没有当前记录。 - Function GetZFKMGS/Mdl_MDB"_s;
    EXPECT_EQ(dialogs.failures.count(message), 2) << "one total in two streams";
    EXPECT_EQ(scoreRows(u"*"_s), QString());
    EXPECT_EQ(dialogs.shown.last(), u"导入完成！"_s);
}

TEST_F(ExamImportFinish, ATSettingThatIsRefusedLeavesTheConversionOfTheScoringBefore)
{
    library::Settings& settings = library.scores.settings;
    request.afterwards = importing::Afterwards::Score;
    twoStudents();
    run();
    EXPECT_EQ(settings.TFactor, 10) << "the workbench finds what the import read";
    library.execute(u"update 设置表 set 设置='50+10z' where 名称='T分'"_s);
    dialogs.shown.clear();
    request.examName = u"期末"_s;
    twoStudents();
    run();
    EXPECT_EQ(dialogs.shown, (QStringList{u"T分转换公式设置不正确！"_s, u"导入完成！"_s}));
    EXPECT_EQ(library.rows(u"select 语文T分 from 成绩表 where 考试名称='期末'"_s), u"43 / 57"_s);
}

TEST_F(ExamImportFinish, TheScoringKnowsTheStreamsOfBeforeTheImport)
{
    forgetStudents();
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.addStudent(1, 2, u"陈静"_s, u"文"_s);
    request.afterwards = importing::Afterwards::Score;
    twoStudents();
    run();
    EXPECT_EQ(scoreRows(derived), u"NULL|NULL|NULL|2 / NULL|NULL|NULL|1"_s)
        << "the ranks alone ask the list of students itself";
    EXPECT_EQ(library.scores.catalogue.Streams, QStringList{u"文"_s});
    EXPECT_TRUE(scoring::Scoring(library.scores).score(u"期中"_s, progress));
    EXPECT_EQ(scoreRows(derived), u"-0.71|43|110|2 / 0.71|57|130.5|1"_s);
}

TEST_F(ExamImportFinish, StudentsWhoComeInWithTheirScoresAreNotScored)
{
    forgetStudents();
    request.afterwards = importing::Afterwards::Score;
    twoStudents();
    dialogs.expect(u"班级 1 还没有学生"_s, u"留空"_s);
    EXPECT_EQ(run(), importing::ImportResult::Finished);
    EXPECT_EQ(scoreRows(derived), u"NULL|NULL|NULL|NULL / NULL|NULL|NULL|NULL"_s);
    EXPECT_EQ(library.scores.catalogue.Streams, QStringList{QString()});
    EXPECT_TRUE(scoring::Scoring(library.scores).score(u"期中"_s, progress));
    EXPECT_EQ(scoreRows(derived), u"NULL|NULL|-1|NULL / NULL|NULL|-1|NULL"_s)
        << "the exam has no formula for the empty stream of their class";
}

} // namespace
