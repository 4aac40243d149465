#include "library/LibraryShape.h"

#include <gtest/gtest.h>

#include "platform/database/WriteBatch.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class Indexes : public testing::Test
{
protected:
    QString names()
    {
        return test.rows(u"select name from sqlite_master where type='index' and "
                         "name not like 'sqlite%' order by name"_s);
    }

    /// Makes the file one without indexes, and gives the names of those it had.
    QString dropAll()
    {
        const QString had = names();
        for (const QString& index : had.split(u" / "_s))
            test.execute(u"drop index [%1]"_s.arg(index));
        return had;
    }

    TestLibrary test{{u"语文"_s}};
};

TEST_F(Indexes, OfTheTemplateAreThoseThatAnOlderFileIsGiven)
{
    const QString ofTemplate = dropAll();
    EXPECT_EQ(ofTemplate.count(u" / "_s) + 1, library::libraryShape().indexes.size());
    EXPECT_EQ(names(), u""_s);
    test.scores.OpenDB();
    database::WriteBatch batch(test.scores.Conn);
    batch.commit();
    EXPECT_EQ(names(), ofTemplate);
}

TEST_F(Indexes, ComeWithTheFirstRowThatIsWrittenByItself)
{
    const QString ofTemplate = dropAll();
    test.scores.OpenDB();
    EXPECT_EQ(names(), u""_s) << "opening writes nothing";
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    EXPECT_EQ(names(), ofTemplate);
    EXPECT_EQ(test.rows(u"select 姓名 from 信息表"_s), u"甲"_s);
}

TEST_F(Indexes, OfATableThatAnOlderFileLacksAreLeftOut)
{
    const QString ofTemplate = dropAll();
    test.execute(u"drop table 教师表"_s);
    test.scores.OpenDB();
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    EXPECT_EQ(names().split(u" / "_s) + QStringList{u"教师表_考试"_s}, ofTemplate.split(u" / "_s));
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Indexes, AnswerWhatOpeningAsksOfTheStudentsWithoutTheirRows)
{
    for (const QString& column : {u"科类"_s, u"班级"_s, u"类别代码"_s})
        EXPECT_TRUE(test.rows(u"explain query plan select distinct %1 from 信息表"_s.arg(column))
                        .contains(u"COVERING INDEX"_s))
            << column.toStdString();
}

TEST_F(Indexes, ServeTheQuestionsThatAreAskedForEachRow)
{
    const std::pair<QString, QString> cases[] = {
        {u"成绩表 where 考试名称='期中' and 科类='理' and 班级=3"_s, u"成绩表_考试"_s},
        {u"成绩表 where id=7"_s, u"成绩表_学生"_s},
        {u"成绩表 where 班级=3 and 学号=4"_s, u"成绩表_班级学号"_s},
        {u"信息表 where 班级=3 and 学号=4"_s, u"信息表_班级学号"_s},
        {u"信息表 where 科类='理' and 班级=3"_s, u"信息表_科类班级类别"_s},
        {u"教师表 where 考试名称='期中' and 班级=3"_s, u"教师表_考试"_s},
    };
    for (const auto& [question, index] : cases)
        EXPECT_TRUE(test.rows(u"explain query plan select * from "_s + question).contains(index))
            << question.toStdString();
}

} // namespace
