#include "individual/paint/ClassCharts.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>

#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace individual {

namespace {

using support::TestLibrary;

/// Notes what it is told, and cancels ahead of a page.
class Watcher : public runtime::Progress
{
public:
    explicit Watcher(int cancelAt = -1) : m_cancelAt(cancelAt) {}

    void report(const QString& text, int done, int total) override
    {
        told.append(u"%1 %2/%3"_s.arg(text).arg(done).arg(total));
    }
    void finish() override { isFinished = true; }
    bool cancelled() const override { return m_cancelAt >= 0 && told.size() > m_cancelAt; }

    QStringList told;
    bool isFinished = false;

private:
    int m_cancelAt;
};

class ChartsOfAClass : public testing::Test
{
protected:
    void SetUp() override
    {
        test.addStudent(3, 2, u"乙"_s, u"理"_s);
        test.addStudent(3, 1, u"甲"_s, u"理"_s);
        test.addStudent(4, 1, u"丙"_s, u"理"_s);
        for (const auto& [exam, number] : {std::pair(u"期中"_s, 1), {u"期末"_s, 2}}) {
            for (int student = 1; student <= 2; ++student)
                test.addScores(exam, 3, student,
                               {{u"考试编号"_s, number},
                                {u"语文"_s, 80},
                                {u"语文年名"_s, student},
                                {u"语文班名"_s, student}});
        }
    }

    ClassChartsResult run(const QString& target)
    {
        return exportClassCharts(test.scores, request, target, progress);
    }

    QStringList files() const
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    static qsizetype pages(const QString& pdf) { return support::read(pdf).count("/Type /Page\n"); }

    TestLibrary test{{u"语文"_s, u"数学"_s}};
    ClassChartsRequest request{3, {{u"语文"_s, 0x0000FF}}, RankKind::Grade};
    QString pdf = test.file(u"三班.pdf"_s);
    QString folder = test.file(u"图"_s);
    Watcher progress;
};

TEST_F(ChartsOfAClass, APdfHasAPageForEachStudent)
{
    const ClassChartsResult result = run(pdf);
    EXPECT_TRUE(result.isComplete);
    EXPECT_EQ(result.files, QStringList{pdf});
    EXPECT_EQ(pages(pdf), 2);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"导出完成！"_s});
}

TEST_F(ChartsOfAClass, ProgressNamesTheStudentsInTheOrderOfTheTable)
{
    run(pdf);
    EXPECT_EQ(progress.told,
              (QStringList{u"正在导出分析图：乙 0/2"_s, u"正在导出分析图：甲 1/2"_s}));
    EXPECT_TRUE(progress.isFinished);
}

TEST_F(ChartsOfAClass, AFolderGetsAPictureForEachStudent)
{
    const ClassChartsResult result = run(folder);
    EXPECT_TRUE(result.isComplete);
    EXPECT_EQ(files(), (QStringList{u"3班1号甲.png"_s, u"3班2号乙.png"_s}));
    EXPECT_EQ(result.files, (QStringList{QDir(folder).filePath(u"3班2号乙.png"_s),
                                         QDir(folder).filePath(u"3班1号甲.png"_s)}));
    const QImage image(result.files.front());
    EXPECT_EQ(image.size(), QSize(1404, 993));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::white));
}

TEST_F(ChartsOfAClass, ChartsShowTheTickedColumnsInTheirColours)
{
    const auto redDots = [&] {
        const QImage image(QDir(folder).filePath(u"3班1号甲.png"_s));
        int found = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                found += image.pixelColor(x, y) == QColor(255, 0, 0) ? 1 : 0;
        }
        return found;
    };
    run(folder);
    EXPECT_GT(redDots(), 100);
    test.dialogs.expect(u"同名的图片"_s, u"覆盖"_s);
    request.ticked.clear();
    run(folder);
    EXPECT_EQ(redDots(), 0);
}

TEST_F(ChartsOfAClass, AStudentWithoutExamsHasAPageTooAndCostsNoMessage)
{
    test.addStudent(3, 3, u"丁"_s, u"理"_s);
    EXPECT_TRUE(run(pdf).isComplete);
    EXPECT_EQ(pages(pdf), 3);
    EXPECT_EQ(test.dialogs.failures, QStringList());
}

TEST_F(ChartsOfAClass, AClassWithoutStudentsIsTold)
{
    request.classNumber = 9.5;
    EXPECT_FALSE(run(pdf).isComplete);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"9.5 班没有学生。\n没有导出PDF文件。"_s});
    EXPECT_EQ(test.dialogs.look(u"没有学生"_s).icon, runtime::Icon::Warning);
    EXPECT_FALSE(QFile::exists(pdf));
}

TEST_F(ChartsOfAClass, ACancelledPdfLeavesNothing)
{
    Watcher cancelled(1);
    EXPECT_FALSE(exportClassCharts(test.scores, request, folder + u".PDF"_s, cancelled).isComplete);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"提示: 已经取消。没有导出PDF文件。"_s});
    EXPECT_TRUE(cancelled.isFinished);
    EXPECT_EQ(QDir(test.folder.path())
                  .entryList({u"*.pdf"_s, u".yunshan*"_s}, QDir::Files | QDir::Hidden),
              QStringList());
}

TEST_F(ChartsOfAClass, ACancelledPdfLeavesTheOlderOneAsItWas)
{
    support::write(pdf, "old");
    Watcher cancelled(0);
    exportClassCharts(test.scores, request, pdf, cancelled);
    EXPECT_EQ(support::read(pdf), "old");
}

TEST_F(ChartsOfAClass, CancelledPicturesThatWereWrittenStayWhichIsSaid)
{
    Watcher cancelled(1);
    const ClassChartsResult result = exportClassCharts(test.scores, request, folder, cancelled);
    EXPECT_FALSE(result.isComplete);
    EXPECT_EQ(files(), QStringList{u"3班2号乙.png"_s});
    EXPECT_EQ(test.dialogs.shown, QStringList{u"提示: 已经取消。已导出的 1 张图片保留。"_s});
}

TEST_F(ChartsOfAClass, OlderPicturesAreAskedAbout)
{
    QDir().mkpath(folder);
    support::write(folder + u"/3班1号甲.png"_s, "old");
    test.dialogs.expect(u"里已有 1 张同名的图片，是否覆盖？"_s, u"取消"_s);
    EXPECT_FALSE(run(folder).isComplete);
    EXPECT_EQ(test.dialogs.safeOf(u"同名的图片"_s), u"取消"_s);
    EXPECT_EQ(support::read(folder + u"/3班1号甲.png"_s), "old");
    EXPECT_EQ(files(), QStringList{u"3班1号甲.png"_s});
    test.dialogs.expect(u"同名的图片"_s, u"覆盖"_s);
    EXPECT_TRUE(run(folder).isComplete);
    EXPECT_NE(support::read(folder + u"/3班1号甲.png"_s), "old");
}

TEST_F(ChartsOfAClass, NamesThatNoFileHasAreCleanedAndEachFileIsAnother)
{
    test.execute(u"delete from 信息表 where 班级=3"_s);
    for (const QString& name : {u"../../王'五"_s, u"a/b"_s, u"a:b"_s, u"A\nB"_s, QString(50, u'长'),
                                u"-- rm *"_s, QString()})
        test.addStudent(3, 1, name, u"理"_s);
    EXPECT_TRUE(run(folder).isComplete);
    EXPECT_EQ(files(),
              (QStringList{u"3班1号-- rm _.png"_s, u"3班1号.._.._王'五.png"_s, u"3班1号.png"_s,
                           u"3班1号A_B__.png"_s, u"3班1号a_b.png"_s, u"3班1号a_b_.png"_s,
                           u"3班1号"_s + QString(50, u'长') + u".png"_s}));
    EXPECT_EQ(test.dialogs.shown, QStringList{u"导出完成！"_s});
}

TEST_F(ChartsOfAClass, AHostileNameIsNoMoreThanATextOfThePage)
{
    test.execute(u"update 信息表 set 姓名='王''五 -- "_s + QString(30, u'长')
                 + u"' where 学号=1"_s);
    test.execute(u"update 成绩表 set 考试名称='--"_s + QString(40, u'长')
                 + u"' where 考试编号=1"_s);
    EXPECT_TRUE(run(pdf).isComplete);
    EXPECT_EQ(test.dialogs.failures, QStringList());
    EXPECT_EQ(pages(pdf), 2);
}

TEST_F(ChartsOfAClass, APlaceThatCannotBeWrittenIsTold)
{
    support::write(folder, "a file");
    EXPECT_FALSE(run(folder).isComplete);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"不能建立文件夹“%1”。\n没有导出图片。"_s.arg(folder)});
    test.dialogs.shown.clear();
    const QString inside = folder + u"/三班.pdf"_s;
    EXPECT_FALSE(run(inside).isComplete);
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.shown.front().startsWith(u"无法写入文件 "_s + inside));
    EXPECT_TRUE(test.dialogs.shown.front().endsWith(u"\n没有导出PDF文件。"_s));
    EXPECT_EQ(test.dialogs.look(u"无法写入"_s).icon, runtime::Icon::Warning);
}

TEST_F(ChartsOfAClass, AFullDiskLeavesTheOlderPdfAsItWas)
{
    support::write(pdf, "old");
    const support::FullDisk disk(1000);
    EXPECT_FALSE(run(pdf).isComplete);
    EXPECT_EQ(support::read(pdf), "old");
}

TEST_F(ChartsOfAClass, AFullDiskEndsThePicturesAndSaysWhatStays)
{
    const support::FullDisk disk(1000);
    EXPECT_FALSE(run(folder).isComplete);
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.shown.front().endsWith(u"\n没有导出图片。"_s));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(ChartsOfAClass, ManyExamsAndColumnsHaveRoomOnAPage)
{
    TestLibrary large{{u"语文"_s, u"数学"_s, u"英语"_s, u"物理"_s, u"化学"_s, u"生物"_s, u"政治"_s,
                       u"历史"_s, u"地理"_s, u"文科总分"_s, u"理科总分"_s, u"总分"_s}};
    large.addStudent(3, 1, u"甲"_s, u"理"_s);
    for (int exam = 1; exam <= 60; ++exam)
        large.addScores(u"第%1次"_s.arg(exam), 3, 1,
                        {{u"考试编号"_s, exam}, {u"语文年名"_s, exam % 3}});
    EXPECT_TRUE(exportClassCharts(large.scores, request, pdf, progress).isComplete);
    EXPECT_EQ(pages(pdf), 1);
}

} // namespace

} // namespace individual
