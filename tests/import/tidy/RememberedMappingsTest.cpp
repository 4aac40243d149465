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

TEST_F(Remembered, WhatTheProgramLeftOutForWantOfASubjectIsTakenOnceItIsThere)
{
    roster = Roster({u"数学"_s}, {});
    book.Worksheets().Item(1).setCell(1, 5, u"数学"_s);
    Proposal former = proposed();
    chooseColumn(former, 0, 2, {Field::Number});
    again(former);
    EXPECT_EQ(former.warnings, QStringList{u"没有科目“语文”，表里的“语文”一列没有导入。"_s});
    RememberedMappings(paths).remember(former);
    roster = Roster({u"语文"_s, u"数学"_s}, {});
    Proposal next = proposed();
    EXPECT_TRUE(RememberedMappings(paths).apply(next)) << "座号 was chosen";
    again(next);
    EXPECT_EQ(result(next), u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|张三|90|95"_s);
    roster = Roster({u"数学"_s}, {});
    next = proposed();
    RememberedMappings(paths).apply(next);
    again(next);
    EXPECT_EQ(next.warnings, former.warnings) << "told each time";
}

TEST_F(Remembered, AChoiceForASubjectThatOneLibraryLacksServesTheOther)
{
    RememberedMappings(paths).remember(confirmed());
    const Roster former = roster;
    roster = Roster({u"数学"_s}, {});
    Proposal next = proposed();
    RememberedMappings(paths).apply(next);
    again(next);
    RememberedMappings(paths).remember(next);
    roster = former;
    next = proposed();
    RememberedMappings(paths).apply(next);
    again(next);
    EXPECT_EQ(next.sheets[0].column(5)->use.name, u"语文"_s);
}

TEST_F(Remembered, AWorkbookForWhichNothingWasChosenIsNotKept)
{
    book.Worksheets().Item(1).setCell(1, 2, u"学号"_s);
    book.Worksheets().Item(1).setCell(1, 5, u"数学"_s);
    Proposal proposal = proposed();
    ASSERT_TRUE(proposal.isDecided());
    RememberedMappings(paths).remember(proposal);
    EXPECT_EQ(RememberedMappings(paths).count(), 0);
}

TEST_F(Remembered, QuestionsAboutTheContentAreAskedForAChosenColumnToo)
{
    excel::Worksheet& made = book.Worksheets().Item(1);
    made.setCell(1, 4, u"类"_s);
    made.setCell(2, 4, u"理"_s);
    Proposal list = proposed(Goal::StudentList);
    chooseColumn(list, 0, 2, {Field::Number});
    chooseColumn(list, 0, 4, {Field::Stream});
    again(list);
    EXPECT_TRUE(list.isDecided());
    RememberedMappings(paths).remember(list);
    made.setCell(2, 4, u"物理类"_s);
    Proposal next = proposed(Goal::StudentList);
    RememberedMappings(paths).apply(next);
    again(next);
    EXPECT_EQ(result(next), u"数据表“Sheet1”的 D 列“类”：第 2 行是“物理类”，成绩库的科类是文或理，"
                            "请选择这一列不导入，或者改好再整理。"_s);
}

TEST_F(Remembered, AChosenSubjectWhoseColumnHoldsTextsTheNextTimeIsAskedAbout)
{
    RememberedMappings(paths).remember(confirmed());
    book.Worksheets().Item(1).setCell(2, 5, u"良好"_s);
    Proposal next = proposed();
    RememberedMappings(paths).apply(next);
    again(next);
    EXPECT_TRUE(next.questions.first().endsWith(u"“语文赋分”：这一列大多不是数字。"_s))
        << next.questions.join(u'\n').toStdString();
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
          u"[{\"goal\":\"exam\",\"headings\":[\"a\"],\"chosen\":[]}]"_s,
          u"[{\"goal\":\"exam\",\"headings\":[\"a\"],\"chosen\":[{\"field\":\"' or 1\"}]}]"_s,
          QString(5 * 1024 * 1024, u'[')}) {
        write(text);
        EXPECT_EQ(RememberedMappings(paths).count(), 0);
    }
    RememberedMappings(paths).remember(confirmed());
    EXPECT_EQ(RememberedMappings(paths).count(), 1);
}

} // namespace
} // namespace tidy
