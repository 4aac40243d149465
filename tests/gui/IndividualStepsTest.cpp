// What individual analysis does in which order, and what stands on it afterwards.
#include <QSplitter>

#include "gui/IndividualFixture.h"
#include "individual/ui/SplitterBar.h"

namespace {

class StepsOfIndividualAnalysis : public support::IndividualFixture
{
protected:
    StepsOfIndividualAnalysis() { open(); }

    void moveSides(int distance) const
    {
        QSplitterHandle* handle = form->findChild<QSplitter*>()->handle(1);
        const QPoint from(handle->rect().center());
        drag(handle, from, from + QPoint(distance, 0));
    }

    QSize photoSize() const { return photo->findChild<QLabel*>(u"Image1"_s)->pixmap().size(); }

    /// The tags of the failures, each once where it comes first.
    QStringList failedRoutines() const
    {
        QStringList tags;
        for (const QString& failure : std::as_const(test.dialogs.failures))
            tags.append(failure.section(u" - "_s, -1));
        tags.removeDuplicates();
        return tags;
    }
};

TEST_F(StepsOfIndividualAnalysis, GridPhotoAndChartComeInThisOrder)
{
    test.execute(u"alter table 成绩表 drop column 语文年名"_s);
    test.execute(u"update 信息表 set 照片名='1.jpg', 照片=x'00' where ID=%1"_s.arg(wang));
    clickNode(0, 0);
    EXPECT_EQ(failedRoutines(),
              (QStringList{u"Sub ShowGeRenCJ/FormGeRenChenJi"_s, u"Sub LoadPic/FormZP"_s,
                           u"Function GetMC/Mdl_MDB"_s}));
}

TEST_F(StepsOfIndividualAnalysis, APhotoIsShownAndWithoutOneTheEmptyPicture)
{
    // A bitmap of two dots by one.
    test.execute(u"update 信息表 set 照片名='1.bmp', 照片=x'"
                 "424d3e0000000000000036000000280000000200000001000000010018000000000008000000"
                 "130b0000130b000000000000000000000000ff0000ff0000' where ID=%1"_s.arg(wang));
    clickNode(0, 0);
    EXPECT_EQ(photoSize(), QSize(2, 1));
    clickNode(0, 1);
    EXPECT_EQ(photoSize(), QImage(test.paths.dataFile(u"nopic.gif"_s)).size());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(StepsOfIndividualAnalysis, APhotoWithoutBytesIsToldAndNeverThatOfTheStudentBefore)
{
    const QString noPicture = u"照片文件不存在。 - Sub LoadPic/FormZP"_s;
    test.execute(u"update 信息表 set 照片名='1.bmp', 照片=x'"
                 "424d3e0000000000000036000000280000000200000001000000010018000000000008000000"
                 "130b0000130b000000000000000000000000ff0000ff0000' where ID=%1"_s.arg(wang));
    for (const QString& bytes : {u"null"_s, u"x''"_s}) {
        test.execute(
            u"update 信息表 set 照片名='2.bmp', 照片=%1 where ID<>%2"_s.arg(bytes).arg(wang));
        test.dialogs.failures.clear();
        clickNode(0, 0);
        EXPECT_EQ(photoSize(), QSize(2, 1));
        clickNode(0, 1);
        EXPECT_EQ(photoSize(), QImage(test.paths.dataFile(u"nopic.gif"_s)).size());
        EXPECT_EQ(test.dialogs.failures, QStringList{noPicture});
    }
}

TEST_F(StepsOfIndividualAnalysis, AFirstStudentWithoutScoresLeavesThePhotoItsCaption)
{
    clickNode(1, 0);
    EXPECT_TRUE(photo->isVisible());
    EXPECT_EQ(photo->windowTitle(), u"照片"_s);
}

TEST_F(StepsOfIndividualAnalysis, ANewSizeAheadOfTheFirstChartDrawsNone)
{
    form->resize(form->size() - QSize(100, 0));
    EXPECT_TRUE(exams().isEmpty());
    EXPECT_FALSE(label(u"LabelStuName"_s)->isVisible());
}

TEST_F(StepsOfIndividualAnalysis, TheEdgeBetweenTreeAndChartDrawsTheChartAnew)
{
    form->resize(1200, 700);
    clickNode(0, 0);
    const int before = chart->width();
    moveSides(60);
    ASSERT_EQ(chart->width(), before - 60);
    EXPECT_NEAR(label(u"LabelStuName"_s)->geometry().center().x(), chart->width() / 2, 2);
}

TEST_F(StepsOfIndividualAnalysis, TheEdgeBetweenTreeAndChartIsKeptAndDrawsNoFirstChart)
{
    moveSides(60);
    EXPECT_TRUE(exams().isEmpty());
    const int width = tree->width();
    form->close();
    open();
    EXPECT_EQ(tree->width(), width);
}

TEST_F(StepsOfIndividualAnalysis, TheSplitterLetGoReadsTheStudentAgain)
{
    clickNode(0, 0);
    test.execute(u"update 成绩表 set 语文=99 where id=%1"_s.arg(wang));
    drag(find<QWidget>(u"PictureW"_s), QPoint(5, 2), QPoint(5, -8));
    EXPECT_EQ(cell(1, 1), u"99"_s);
}

TEST_F(StepsOfIndividualAnalysis, TheSplitterLetGoWithAClassSelectedShowsNobody)
{
    clickNode(0, 0);
    clickNode(1);
    const int rank = label(u"LabelMinCi_1"_s)->y();
    test.execute(u"update 成绩表 set 语文=99 where id=%1"_s.arg(wang));
    drag(find<QWidget>(u"PictureW"_s), QPoint(5, 2), QPoint(5, -8));
    EXPECT_EQ(cell(1, 1), u"90"_s);
    EXPECT_EQ(label(u"LabelMinCi_1"_s)->y(), rank);
}

TEST_F(StepsOfIndividualAnalysis, TheWorkbookHasTheWholeOfALongName)
{
    const QString name(300, u'长');
    test.execute(u"update 成绩表 set 姓名='%1' where id=%2"_s.arg(name).arg(wang));
    clickNode(0, 0);
    trigger(u"tDCCJ"_s);
    EXPECT_EQ(applications.front()->Workbooks().Item(1).Worksheets().Item(1).Cells(1, 1).text(),
              name);
}

} // namespace
