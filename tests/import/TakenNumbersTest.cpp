#include <gtest/gtest.h>

#include <QDir>

#include "StudentImportFixture.h"

namespace {

using importing::Backup;
using importing::ImportResult;

using TakenNumbers = StudentImportTest;

class TakenNumbersInAList : public StudentImportTest
{
protected:
    TakenNumbersInAList()
    {
        library.addStudent(1, 1, u"张三"_s, u"文"_s);
        library.addStudent(1, 2, u"李四"_s, u"文"_s);
        sheet({{u"班级"_s, u"学号"_s, u"姓名"_s},
               {1, 2, u"李四"_s},
               {1, 3, u"王五"_s},
               {u"1班"_s, u"03"_s, u"赵六"_s},
               {1, {}, u"甲"_s},
               {1, {}, u"乙"_s}});
    }

    static constexpr const char16_t* question = u"名单中有 1 人的班级和学号在成绩库里已经有了";
};

TEST_F(TakenNumbersInAList, AreCountedAndAskedAboutBeforeAnythingIsWritten)
{
    dialogs.expect(QString::fromUtf16(question), u"取消"_s);
    EXPECT_EQ(run(Backup::Make), ImportResult::Stopped);
    EXPECT_EQ(dialogs.safeOf(QString::fromUtf16(question)), u"取消"_s);
    EXPECT_EQ(dialogs.shown,
              QStringList{u"名单中有 1 人的班级和学号在成绩库里已经有了（1 班 2 号 李四）。\n"
                          "名单中有 1 人的班级和学号在名单的前面已经有了（1 班 3 号 赵六）。\n\n"
                          "跳过已有：不导入这些人，只导入其余的 3 人。\n"
                          "全部添加：全部导入，这样的班级和学号就会有两条以上的记录。"_s});
    EXPECT_EQ(students(u"姓名"_s), u"张三 / 李四"_s);
    EXPECT_EQ(QDir(library.folder.path()).entryList({u"*.bak"_s}), QStringList());
}

TEST_F(TakenNumbersInAList, CanBePassedOver)
{
    dialogs.expect(QString::fromUtf16(question), u"跳过已有"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(students(u"学号,姓名"_s), u"1|张三 / 2|李四 / 3|王五 / 0|甲 / 0|乙"_s);
    EXPECT_EQ(dialogs.shown.value(1), u"导入完成！"_s);
}

TEST_F(TakenNumbersInAList, CanAllBeAdded)
{
    dialogs.expect(QString::fromUtf16(question), u"全部添加"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(students(u"学号,姓名"_s),
              u"1|张三 / 2|李四 / 2|李四 / 3|王五 / 3|赵六 / 0|甲 / 0|乙"_s);
}

TEST_F(TakenNumbers, OfManyTakenNumbersThreeAreNamed)
{
    Rows rows{{u"班级"_s, u"学号"_s, u"姓名"_s}};
    rows.resize(1201, {1, 1, u"王芳"_s});
    sheet(rows);
    dialogs.expect(u"名单中有 1199 人的班级和学号在名单的前面已经有了"
                   "（1 班 1 号 王芳、1 班 1 号 王芳、1 班 1 号 王芳 …）。"_s,
                   u"取消"_s);
    EXPECT_EQ(run(), ImportResult::Stopped);
}

TEST_F(TakenNumbers, ImportedTwiceAStudentIsAskedAboutAndCanStandTwice)
{
    dialogs.expect(u"跳过已有"_s, u"全部添加"_s);
    for (int time = 0; time < 2; ++time) {
        sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}});
        EXPECT_EQ(run(), ImportResult::Finished);
    }
    EXPECT_EQ(students(u"姓名"_s), u"王芳 / 王芳"_s);
}

} // namespace
