#include "import/tidy/RememberedMappings.h"

#include <QDir>
#include <QTemporaryDir>

#include "TidyFixture.h"

namespace tidy {
namespace {

class Remembered : public TidyFixture
{
protected:
    Remembered()
    {
        QDir(folder.path()).mkdir(u"data"_s);
        sheet(u"Sheet1"_s, {{u"班级"_s, u"座号"_s, u"姓名"_s, u"语文"_s, u"语文赋分"_s},
                            {1, 1, u"张三"_s, 90, 95}});
    }

    /// A proposal with the user's choices, which was confirmed.
    Proposal confirmed()
    {
        Proposal proposal = proposed();
        chooseColumn(proposal, 0, 2, {Field::Number});
        chooseColumn(proposal, 0, 5, {Field::Subject, u"语文"_s});
        again(proposal);
        return proposal;
    }

    void write(const QString& text)
    {
        runtime::writeTextFile(paths.dataFile(u"整理记录.json"_s), text);
    }

    QTemporaryDir folder;
    runtime::AppPaths paths{folder.path()};
};

TEST_F(Remembered, AConfirmedMappingServesTheNextWorkbookWithTheSameHeadings)
{
    RememberedMappings(paths).remember(confirmed());
    Proposal next = proposed();
    EXPECT_FALSE(next.isDecided());
    EXPECT_TRUE(RememberedMappings(paths).apply(next));
    again(next);
    EXPECT_EQ(result(next), u"[成绩]\n班级|学号|姓名|语文\n1|1|张三|95"_s);
    EXPECT_EQ(next.sheets[0].column(5)->decidedBy, DecidedBy::Remembered);
    EXPECT_EQ(next.sheets[0].column(5)->reason, u"和上次确认的一样。"_s);
}

TEST_F(Remembered, OtherHeadingsAndAnotherImportAreNotTouched)
{
    RememberedMappings(paths).remember(confirmed());
    Proposal list = proposed(Goal::StudentList);
    EXPECT_FALSE(RememberedMappings(paths).apply(list));
    book.Worksheets().Item(1).setCell(1, 6, u"数学"_s);
    Proposal other = proposed();
    EXPECT_FALSE(RememberedMappings(paths).apply(other));
}

TEST_F(Remembered, ASubjectThatTheLibraryLacksIsNotTaken)
{
    RememberedMappings(paths).remember(confirmed());
    roster = Roster({u"数学"_s}, {});
    Proposal next = proposed();
    RememberedMappings(paths).apply(next);
    again(next);
    EXPECT_EQ(next.sheets[0].column(5)->use, ColumnUse());
}

TEST_F(Remembered, TheNewestAreKept)
{
    RememberedMappings mappings(paths);
    Proposal proposal = confirmed();
    for (int number = 0; number < RememberedMappings::most + 10; ++number) {
        proposal.sheets[0].columns[3].heading = u"第%1列"_s.arg(number);
        mappings.remember(proposal);
    }
    EXPECT_EQ(RememberedMappings(paths).count(), RememberedMappings::most);
}

TEST_F(Remembered, AFileThatHoldsSomethingElseCountsAsEmpty)
{
    for (const QString& text :
         {u""_s, u"{"_s, u"[1,2,null]"_s, u"{\"goal\":\"exam\"}"_s,
          u"[{\"goal\":\"exam\",\"headings\":[\"a\"],\"uses\":[]}]"_s,
          u"[{\"goal\":\"exam\",\"headings\":[\"a\"],\"uses\":[{\"field\":\"' or 1\"}]}]"_s,
          QString(5 * 1024 * 1024, u'[')}) {
        write(text);
        EXPECT_EQ(RememberedMappings(paths).count(), 0);
    }
    RememberedMappings(paths).remember(confirmed());
    EXPECT_EQ(RememberedMappings(paths).count(), 1);
}

} // namespace
} // namespace tidy
