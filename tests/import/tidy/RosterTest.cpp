#include "import/tidy/Roster.h"

#include <gtest/gtest.h>

#include "import/tidy/Tidy.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace tidy {
namespace {

using namespace Qt::StringLiterals;

class LibraryRoster : public testing::Test
{
protected:
    LibraryRoster()
    {
        library.addStudent(2, 1, u"欧阳 明"_s, u"文"_s);
        library.addStudent(1, 2, u"' or ''='"_s, u"理"_s);
        library.addStudent(1, 3, u"王五"_s, u"理"_s);
        library.addStudent(1, 4, u"王五"_s, u"理"_s);
        library.execute(u"update 信息表 set 学籍号='0012' where 学号=3"_s);
        library.reload();
    }

    Roster roster() { return Roster::ofLibrary(library.scores, aliases); }

    support::TestLibrary library{{u"语文"_s, u"数学"_s, u"总分"_s}};
    const Aliases aliases{QStringList{u"考号=准考证号"_s}};
};

TEST_F(LibraryRoster, HasTheSubjectsWithoutTotalsAndTheStudents)
{
    const Roster all = roster();
    EXPECT_EQ(all.subjects(), (QStringList{u"语文"_s, u"数学"_s}));
    EXPECT_EQ(all.classes(), (std::vector<double>{1, 2}));
    EXPECT_EQ(all.streamOf(2), u"文"_s);
    EXPECT_EQ(all.streamOf(3), u""_s);
    EXPECT_EQ(all.at(1, 2).front()->name, u"' or ''='"_s);
    EXPECT_TRUE(all.at(2, 2).empty());
}

TEST_F(LibraryRoster, FindsByNameWithoutBlanksInTheClass)
{
    const Roster all = roster();
    EXPECT_EQ(all.named(2, u"欧 阳　明"_s).size(), 1U);
    EXPECT_EQ(all.named(1, u"欧阳明"_s).size(), 0U);
    EXPECT_EQ(all.named(1, u"王五"_s).size(), 2U);
    EXPECT_EQ(all.named(u"欧阳明"_s).size(), 1U);
}

TEST_F(LibraryRoster, FindsByNumbersWhoseZerosGotLost)
{
    EXPECT_EQ(roster().withSchoolNumber(u"12"_s).front()->number, 3);
    EXPECT_TRUE(roster().withExamNumber(u"12"_s).empty());
    library.execute(u"alter table 信息表 add column 准考证号 text(50)"_s);
    library.execute(u"update 信息表 set 准考证号='A07' where 学号=4"_s);
    EXPECT_EQ(roster().withExamNumber(u"ａ07"_s).front()->number, 4);
}

TEST_F(LibraryRoster, WithoutALibraryHasTheShippedSubjects)
{
    const Roster shipped = Roster::ofShippedSubjects(library.paths);
    EXPECT_EQ(shipped.subjects().join(u' '), u"语文 数学 英语 物理 化学 生物 政治 历史 地理"_s);
    EXPECT_FALSE(shipped.hasStudents());
    EXPECT_EQ(possibleUses(Goal::ExamScores, shipped).size(), 7U + 9U);
    EXPECT_EQ(possibleUses(Goal::StudentList, shipped).size(), 7U + 11U);
}

} // namespace
} // namespace tidy
