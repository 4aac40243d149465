#include "library/Catalogue.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class CatalogueTest : public testing::Test
{
protected:
    library::Catalogue& catalogue() { return test.scores.catalogue; }

    TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
};

TEST_F(CatalogueTest, ALibraryWithoutExamsStillKnowsItsColumns)
{
    test.reload();
    EXPECT_EQ(catalogue().ExamList, QStringList());
    EXPECT_EQ(catalogue().AllColumns, (QStringList{u"语文"_s, u"数学"_s, u"总分"_s}));
    EXPECT_EQ(catalogue().SubjectColumns, (QStringList{u"语文"_s, u"数学"_s}));
    EXPECT_EQ(catalogue().TotalColumns, QStringList{u"总分"_s});
    EXPECT_EQ(catalogue().Streams, QStringList());
    EXPECT_TRUE(catalogue().ClassTable.empty());
}

TEST_F(CatalogueTest, ColumnsGoByTheirPlaceSoThatRenamingOneChangesNothingElse)
{
    test.execute(u"alter table 考试名称表 rename column 备注 to 说明"_s);
    test.execute(u"alter table 考试名称表 rename column 科类 to 文理"_s);
    test.reload();
    EXPECT_EQ(catalogue().AllColumns, (QStringList{u"语文"_s, u"数学"_s, u"总分"_s}));
    test.execute(u"alter table 考试名称表 rename column 数学 to 奥数"_s);
    test.reload();
    EXPECT_EQ(catalogue().AllColumns, (QStringList{u"语文"_s, u"奥数"_s, u"总分"_s}));
    EXPECT_EQ(catalogue().SubjectColumns, (QStringList{u"语文"_s, u"奥数"_s}));
}

TEST_F(CatalogueTest, AColumnIsATotalExactlyWhenItsNameEndsSo)
{
    test.reload();
    EXPECT_TRUE(catalogue().isKeMu(u"语文"_s));
    EXPECT_FALSE(catalogue().isKeMu(u"总分"_s));
    EXPECT_TRUE(catalogue().isKeMuZF(u"总分"_s));
    EXPECT_FALSE(catalogue().isKeMuZF(u"体育"_s));
    EXPECT_EQ(catalogue().GetKmID(u"总分"_s), 3);
    EXPECT_EQ(catalogue().GetKmID(u"体育"_s), -1);
}

TEST_F(CatalogueTest, StreamsComeAscendingAndAtMostTwo)
{
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    test.reload();
    EXPECT_EQ(catalogue().Streams, QStringList{u"理"_s});
    test.addStudent(2, 1, u"乙"_s, u"文"_s);
    test.reload();
    EXPECT_EQ(catalogue().Streams, (QStringList{u"文"_s, u"理"_s}));
    test.addStudent(3, 1, u"丙"_s, u"艺"_s);
    catalogue().GetKeLei();
    EXPECT_EQ(catalogue().Streams, (QStringList{u"文"_s, u"理"_s}));
    EXPECT_EQ(test.dialogs.shown, QStringList{u"科类设置不正确，请重新设置科类。"_s});
}

TEST_F(CatalogueTest, AnEmptyStreamIsToldAndStillListed)
{
    test.addStudent(1, 1, u"甲"_s, u""_s);
    test.addStudent(2, 1, u"乙"_s, u"理"_s);
    catalogue().GetKeLei();
    EXPECT_EQ(catalogue().Streams, (QStringList{u""_s, u"理"_s})) << "the loop goes on";
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"学生科类不能为空，如果不分文理，默认值设为“理”\n请修改！"_s});
}

TEST_F(CatalogueTest, ExamsComeByNumberAndOnceEach)
{
    test.addExam(u"期末"_s, u"文"_s, 2, {});
    test.addExam(u"期末"_s, u"理"_s, 2, {});
    test.addExam(u"期中"_s, u"理"_s, 1, {});
    test.reload();
    EXPECT_EQ(catalogue().ExamList, (QStringList{u"期中"_s, u"期末"_s}));
}

TEST_F(CatalogueTest, AnExamNamedAsAPartOfAnEarlierOneIsNotListed)
{
    test.addExam(u"期中"_s, u"理"_s, 1, {});
    test.addExam(u"高一期中"_s, u"理"_s, 2, {});
    test.reload();
    EXPECT_EQ(catalogue().ExamList, (QStringList{u"期中"_s, u"高一期中"_s}));
    test.execute(u"update 考试名称表 set 考试编号=3 where 考试名称='期中'"_s);
    test.reload();
    EXPECT_EQ(catalogue().ExamList, QStringList{u"高一期中"_s});
}

TEST_F(CatalogueTest, ClassesStandByStreamInAscendingOrderWithTheirSizes)
{
    test.addStudent(10, 1, u"甲"_s, u"理"_s);
    test.addStudent(9, 1, u"乙"_s, u"理"_s);
    test.addStudent(9, 2, u"丙"_s, u"理"_s);
    test.addStudent(1, 1, u"丁"_s, u"文"_s);
    test.reload();
    ASSERT_EQ(catalogue().ClassTable.size(), 2u);
    ASSERT_EQ(catalogue().ClassTable[0].size(), 1u);
    EXPECT_EQ(catalogue().ClassTable[0][0].number, 1);
    ASSERT_EQ(catalogue().ClassTable[1].size(), 2u);
    EXPECT_EQ(catalogue().ClassTable[1][0].number, 9);
    EXPECT_EQ(catalogue().ClassTable[1][0].students, 2);
    EXPECT_EQ(catalogue().ClassTable[1][1].number, 10);
}

TEST_F(CatalogueTest, AClassOfTwoStreamsStandsInBothWithAllItsStudents)
{
    test.addStudent(1, 1, u"甲"_s, u"文"_s);
    test.addStudent(1, 2, u"乙"_s, u"理"_s);
    test.reload();
    ASSERT_EQ(catalogue().ClassTable.size(), 2u);
    for (const std::vector<library::ClassEntry>& classes : catalogue().ClassTable) {
        ASSERT_EQ(classes.size(), 1u);
        EXPECT_EQ(classes[0].number, 1);
        EXPECT_EQ(classes[0].students, 2);
    }
}

TEST_F(CatalogueTest, AStudentWithoutAClassIsToldAndGivesAClassOfNobody)
{
    test.addStudent(2, 1, u"甲"_s, u"理"_s);
    test.addStudent(2, 2, u"乙"_s, u"理"_s);
    test.execute(u"update 信息表 set 班级=NULL where 姓名='乙'"_s);
    test.reload();
    ASSERT_EQ(catalogue().ClassTable.size(), 1u);
    const std::vector<library::ClassEntry>& classes = catalogue().ClassTable[0];
    ASSERT_EQ(classes.size(), 2u);
    EXPECT_EQ(classes[0].number, 0);
    EXPECT_EQ(classes[0].students, 0) << "no row is equal to an empty class";
    EXPECT_EQ(classes[1].number, 2);
    EXPECT_EQ(classes[1].students, 1);
    EXPECT_EQ(test.scores.students.GetZRS(u"理"_s, 0), 2) << "the whole stream counts everyone";
    EXPECT_EQ(test.dialogs.failures, QStringList{u"有学生没有班级。 - Sub GetBJXX/Mdl_MDB"_s});
}

TEST_F(CatalogueTest, ExamsWithoutANameAreOnlyListedIfTheyComeFirst)
{
    test.execute(u"insert into 考试名称表(科类,考试编号) values('理',2)"_s);
    test.addExam(u"期中"_s, u"理"_s, 1, {});
    test.reload();
    EXPECT_EQ(catalogue().ExamList, QStringList{u"期中"_s}) << "nothing is part of every name";
    test.execute(u"update 考试名称表 set 考试编号=0 where 考试名称 is null"_s);
    test.reload();
    EXPECT_EQ(catalogue().ExamList, (QStringList{u""_s, u"期中"_s}));
    catalogue().GetKSKM(u""_s, u"理"_s);
    catalogue().GetKSKMZF(u",期中"_s, u"理"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(CatalogueTest, AnExamOfOneStreamLendsItsColumnsAsymmetrically)
{
    test.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    test.reload();
    // The total's full marks look for the other stream only from 文.
    EXPECT_EQ(catalogue().GetKSKMZF(u"期中"_s, u"理"_s).names, QStringList{u"语文"_s});
    EXPECT_EQ(catalogue().GetKSKM(u"期中"_s, u"理"_s).names, QStringList());
}

TEST_F(CatalogueTest, A文RequestTakesThe理Row)
{
    test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    test.reload();
    EXPECT_EQ(catalogue().GetKSKM(u"期中"_s, u"文"_s).names, QStringList{u"语文"_s});
    const library::ColumnMarks columns = catalogue().GetKSKMZF(u"期中"_s, u"文"_s);
    EXPECT_EQ(columns.names, (QStringList{u"语文"_s, u"总分"_s}));
    EXPECT_EQ(columns.marks, (std::vector<double>{150, 150}));
}

TEST_F(CatalogueTest, FullMarksOfSeveralExamsAreSummed)
{
    test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100.5}, {u"数学"_s, 0}});
    test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 120}, {u"总分"_s, u"语文+数学"_s}});
    test.reload();
    const library::ColumnMarks subjects = catalogue().GetKSKM(u"期中,期末"_s, u"理"_s);
    EXPECT_EQ(subjects.names, QStringList{u"语文"_s});
    EXPECT_EQ(subjects.marks, std::vector<double>{220.5});
    const library::ColumnMarks columns = catalogue().GetKSKMZF(u"期中,期末"_s, u"理"_s);
    EXPECT_EQ(columns.names, (QStringList{u"语文"_s, u"总分"_s}));
    EXPECT_EQ(columns.marks, (std::vector<double>{220.5, 120}));
}

TEST_F(CatalogueTest, FormulasFallBackOnTheOtherStream)
{
    test.addExam(u"期中"_s, u"文"_s, 1, {{u"总分"_s, u"语文+数学"_s}});
    test.reload();
    EXPECT_EQ(catalogue().GetZFKMGS(u"期中"_s, u"理"_s), QStringList{u"语文+数学"_s});
}

TEST_F(CatalogueTest, AnAnswerThatFailsIsTheOneGivenLast)
{
    test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文+数学"_s}});
    test.reload();
    catalogue().GetKSKM(u"期中"_s, u"理"_s);
    catalogue().GetKSKMZF(u"期中"_s, u"理"_s);
    catalogue().GetZFKMGS(u"期中"_s, u"理"_s);
    EXPECT_EQ(catalogue().GetKSKM(u"期'中"_s, u"理"_s).names, QStringList{u"语文"_s});
    EXPECT_EQ(catalogue().GetKSKMZF(u"期'中"_s, u"理"_s).names,
              (QStringList{u"语文"_s, u"总分"_s}));
    EXPECT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_EQ(catalogue().GetZFKMGS(u"没有"_s, u"理"_s), QStringList{u"语文+数学"_s});
    EXPECT_EQ(test.dialogs.failures.last(), u"没有当前记录。 - Function GetZFKMGS/Mdl_MDB"_s);
}

TEST_F(CatalogueTest, FullMarksOfOneSubjectAndOfATotal)
{
    test.addExam(u"期中"_s, u"理"_s, 1,
                 {{u"语文"_s, 150}, {u"数学"_s, 100.5}, {u"总分"_s, u"语文+数学"_s}});
    test.reload();
    EXPECT_EQ(catalogue().getKMMF(u"期中"_s, u"理"_s, u"数学"_s), 100.5f);
    EXPECT_EQ(catalogue().getKMMF(u"期中"_s, u"文"_s, u"数学"_s), 100.5f);
    EXPECT_EQ(catalogue().getKMMF(u"没有"_s, u"理"_s, u"数学"_s), 0);
    EXPECT_EQ(catalogue().GetZFMF(u"期中"_s, u"理"_s, u"总分"_s), 250.5f);
    EXPECT_EQ(catalogue().GetZFMF(u"期中"_s, u"文"_s, u"总分"_s), 250.5f);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(CatalogueTest, TheExamNumberIsTheLastMatchOrTheNextFree)
{
    EXPECT_EQ(catalogue().GetKSBH(u"期中"_s), 1);
    test.addExam(u"期中"_s, u"文"_s, 4, {});
    test.addExam(u"期中"_s, u"理"_s, 7, {});
    EXPECT_EQ(catalogue().GetKSBH(u"期中"_s), 7);
    EXPECT_EQ(catalogue().GetKSBH(u"期末"_s), 8);
}

TEST_F(CatalogueTest, AnExamRowWithoutANumberIsToldAndTheEarlierOneStays)
{
    test.addExam(u"期中"_s, u"文"_s, 4, {});
    test.addExam(u"期末"_s, u"文"_s, 0, {{u"考试编号"_s, runtime::Value()}});
    test.execute(u"insert into 考试名称表(考试名称) values('期中')"_s);
    EXPECT_EQ(catalogue().GetKSBH(u"期中"_s), 4);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"考试没有考试编号。 - Function GetKSBH/Mdl_MDB"_s});
}

TEST_F(CatalogueTest, ExamNumbersEndAtSixteenBits)
{
    test.addExam(u"期中"_s, u"文"_s, 32767, {});
    EXPECT_EQ(catalogue().GetKSBH(u"期末"_s), 0);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.first().endsWith(u" - Function GetKSBH/Mdl_MDB"_s));
}

} // namespace
