#include "library/FormulaTrim.h"

#include <gtest/gtest.h>

#include "library/NewLibrary.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class FormulaTrims : public testing::Test
{
protected:
    FormulaTrims()
    {
        test.execute(u"delete from 总分公式"_s);
        test.execute(
            u"insert into 总分公式 values ('总分','语文+体育+数学+音乐'), "
            "('文科总分','语文+数学'), ('理科总分','体育+音乐'), ('别的总分','语文+体育')"_s);
    }

    QString formulas() { return test.rows(u"select 公式 from 总分公式 order by rowid"_s); }

    TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s, u"文科总分"_s, u"理科总分"_s}};
};

TEST_F(FormulaTrims, OnlyFormulasThatNameLackingSubjectsAreTold)
{
    const std::vector<library::FormulaTrim> trims = library::formulasToTrim(test.scores);
    ASSERT_EQ(trims.size(), 2u);
    EXPECT_EQ(trims[0].total, u"总分"_s);
    EXPECT_EQ(trims[0].formula, u"语文+体育+数学+音乐"_s);
    EXPECT_EQ(trims[0].trimmed, u"语文+数学"_s);
    EXPECT_EQ(trims[1].total, u"理科总分"_s);
    EXPECT_EQ(trims[1].trimmed, QString());
}

TEST_F(FormulaTrims, TrimmingWritesWhatIsLeft)
{
    test.dialogs.expect(u"总分=语文+体育+数学+音乐 → 语文+数学\n"_s, u"改为现有科目"_s);
    library::offerFormulaTrim(test.scores);
    EXPECT_TRUE(
        test.dialogs.questions[0].contains(u"理科总分=体育+音乐 → （没有现有科目，保持不变）\n"_s));
    EXPECT_EQ(formulas(), u"语文+数学 / 语文+数学 / 体育+音乐 / 语文+体育"_s);
    library::offerFormulaTrim(test.scores);
    EXPECT_EQ(test.dialogs.shown.size(), 1) << "there is nothing left to offer";
}

TEST_F(FormulaTrims, TheSafeAnswerKeepsTheFormulas)
{
    const QString before = formulas();
    test.dialogs.expect(u"总分公式里有成绩库没有的科目"_s, u"保持不变"_s);
    library::offerFormulaTrim(test.scores);
    EXPECT_EQ(formulas(), before);
    EXPECT_EQ(test.dialogs.safeOf(u"总分公式"_s), u"保持不变"_s);
}

TEST_F(FormulaTrims, ANewLibraryOffersItBeforeItsClosingText)
{
    test.dialogs.expect(u"总分=语文+数学+英语"_s, u"改为现有科目"_s);
    library::NewLibrary(test.scores)
        .createAsked({u"语文"_s, u"数学"_s, u"总分"_s}, test.file(u"又一个.CJK"_s));
    EXPECT_EQ(test.dialogs.shown.last(), u"新建数据库成功，现在将设置学生信息。"_s);
    EXPECT_EQ(test.rows(u"select 公式 from 总分公式 where 总分='总分'"_s), u"语文+数学"_s);
}

TEST_F(FormulaTrims, ALibraryThatWasNotReplacedIsLeftAlone)
{
    const QString before = formulas();
    test.dialogs.expect(u"是否覆盖原文件"_s, runtime::Answer::Ok);
    library::NewLibrary(test.scores).createAsked({u"语文"_s, u"总分"_s}, test.scores.LibPath);
    EXPECT_EQ(formulas(), before);
    EXPECT_EQ(test.dialogs.questions.size(), 1);
}

} // namespace
