// The popup menu of individual analysis and what its items make.
#include <QClipboard>
#include <QDir>
#include <QMenu>

#include "gui/IndividualFixture.h"
#include "gui/ProgressCanceller.h"
#include "individual/paint/ClassCharts.h"

namespace {

class IndividualExport : public support::IndividualFixture
{
protected:
    IndividualExport() { open(); }
};

TEST_F(IndividualExport, TheMenuHasItsItemsInOrder)
{
    QStringList items;
    for (const QAction* action : find<QMenu>(u"tDC"_s)->actions())
        items.append(
            action->objectName() + u' '
            + (action->isSeparator() ? u"-"_s : widgets::withoutAccessKey(action->text())));
    EXPECT_EQ(items.join(u'|'), u"tDCCJ 导出成绩|tDCTP 导出分析图|fg -|tDCSY 导出成绩和分析图| -|"
                                "CopyPicture 复制图片|ExportClass 导出全班分析图…"_s);
}

TEST_F(IndividualExport, TheRightButtonOnGridAndChartBringsTheMenu)
{
    clickNode(0, 0);
    auto* menu = find<QMenu>(u"tDC"_s);
    for (QWidget* place : {view->viewport(), static_cast<QWidget*>(chart),
                           static_cast<QWidget*>(label(u"LabelMinCi_1"_s))}) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, 3),
                                place->mapToGlobal(QPoint(3, 3)));
        QApplication::sendEvent(place, &event);
        EXPECT_TRUE(menu->isVisible());
        menu->close();
    }
}

TEST_F(IndividualExport, TheChartIsSavedWithItsLabelsAtItsSizeOnTheScreen)
{
    clickNode(0, 0);
    drag(label(u"LabelStuName"_s), QPoint(2, 3), QPoint(62, 33));
    test.dialogs.file = test.file(u"图.bmp"_s);
    trigger(u"tDCTP"_s);
    EXPECT_EQ(test.dialogs.fileFilter, u"位图(*.bmp)|*.bmp|"_s);
    EXPECT_EQ(test.dialogs.fileTitle, u"保存文件"_s);
    const QImage saved(test.file(u"图.bmp"_s));
    EXPECT_EQ(saved.size(), chart->size() * chart->devicePixelRatio());
    EXPECT_EQ(saved.convertToFormat(QImage::Format_RGB32),
              chart->picture().convertToFormat(QImage::Format_RGB32));
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(IndividualExport, APictureThatCannotBeSavedIsTold)
{
    clickNode(0, 0);
    ASSERT_TRUE(QDir(test.folder.path()).mkdir(u"folder.bmp"_s));
    test.dialogs.always(u"同名文件已存在，是否覆盖原文件？"_s, runtime::Answer::Ok);
    test.dialogs.file = test.file(u"folder.bmp"_s);
    trigger(u"tDCTP"_s);
    test.dialogs.file = test.file(u"absent/1.bmp"_s);
    trigger(u"tDCTP"_s);
    EXPECT_EQ(test.dialogs.shown.count(u"图片保存失败！"_s), 2);
    test.dialogs.file.reset();
    trigger(u"tDCTP"_s);
    EXPECT_EQ(test.dialogs.shown.count(u"图片保存失败！"_s), 2);
}

TEST_F(IndividualExport, TheReportHoldsTheGridAndWithTheChartItsPicture)
{
    clickNode(0, 0);
    trigger(u"tDCCJ"_s);
    trigger(u"tDCSY"_s);
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"导出完成！"_s, u"导出完成！"_s}));
    ASSERT_EQ(applications.size(), 2U);
    for (const bool withChart : {false, true}) {
        excel::Worksheet& sheet =
            applications[size_t(withChart)]->Workbooks().Item(1).Worksheets().Item(1);
        EXPECT_EQ(sheet.Cells(1, 1).text(), u"王芳"_s);
        EXPECT_EQ(sheet.Cells(2, 1).text(), u"考试名称"_s);
        EXPECT_EQ(sheet.Cells(4, 2).text(), u"缺考"_s);
        EXPECT_EQ(sheet.drawings().size(), withChart ? 1U : 0U);
    }
    EXPECT_EQ(QImage(test.paths.dataFile(u"tmp.bmp"_s)).size(),
              chart->size() * chart->devicePixelRatio());
}

TEST_F(IndividualExport, TheReportWithoutAStudentHoldsTheEmptyGrid)
{
    trigger(u"tDCCJ"_s);
    excel::Worksheet& sheet = applications.front()->Workbooks().Item(1).Worksheets().Item(1);
    EXPECT_EQ(sheet.Cells(1, 1).text(), u""_s);
    EXPECT_EQ(sheet.Cells(2, 2).text(), u"语文"_s);
    EXPECT_EQ(sheet.Cells(3, 1).text(), u""_s);
}

TEST_F(IndividualExport, ThePictureIsCopied)
{
    clickNode(0, 0);
    trigger(u"CopyPicture"_s);
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(),
              chart->size() * chart->devicePixelRatio());
}

class ChartsOfAClass : public IndividualExport
{
protected:
    void choose(const QString& button)
    {
        test.dialogs.expect(u"导出 1 班全班学生的成绩和分析图。导出成什么？"_s, button);
    }
};

TEST_F(ChartsOfAClass, GoToAPdfFile)
{
    clickNode(0, 0);
    choose(u"一个 PDF 文件，每人一页(&P)"_s);
    test.dialogs.file = test.file(u"一班"_s);
    trigger(u"ExportClass"_s);
    EXPECT_EQ(test.dialogs.fileFilter, u"PDF 文件(*.pdf)|*.pdf|"_s);
    QFile file(test.file(u"一班.pdf"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("%PDF"));
    EXPECT_EQ(test.dialogs.shown.last(), u"导出完成！"_s);
}

TEST_F(ChartsOfAClass, GoToAFolderOfPictures)
{
    clickNode(0, 0);
    choose(u"文件夹，每人一张图片(&F)"_s);
    test.dialogs.folder = test.file(u"图"_s);
    trigger(u"ExportClass"_s);
    EXPECT_EQ(test.dialogs.fileTitle, u"选择存放图片的文件夹"_s);
    EXPECT_EQ(QDir(test.file(u"图"_s)).entryList({u"*.png"_s}).size(), 2);
}

TEST_F(ChartsOfAClass, AreDrawnWithTheTicksColoursAndRanksOfTheScreen)
{
    clickNode(0, 0);
    test.dialogs.color = 0x112233;
    press(u"Command1_2"_s);
    press(u"CheckBox1_1"_s);
    press(u"CheckBox1_2"_s);
    press(u"Option2"_s);
    choose(u"文件夹，每人一张图片(&F)"_s);
    test.dialogs.folder = test.file(u"图"_s);
    trigger(u"ExportClass"_s);
    runtime::NoProgress progress;
    individual::exportClassCharts(test.scores,
                                  {1, {{u"数学"_s, 0x112233}}, individual::RankKind::Class},
                                  test.file(u"同"_s), progress);
    for (const QString& name : {u"1班1号王芳.png"_s, u"1班2号陈静.png"_s}) {
        const QImage picture(test.file(u"图/"_s + name));
        EXPECT_FALSE(picture.isNull());
        EXPECT_EQ(picture, QImage(test.file(u"同/"_s + name)));
    }
}

TEST_F(ChartsOfAClass, CanBeCancelled)
{
    test.execute(u"insert into 信息表(班级,学号,姓名,科类) with recursive n(i) as "
                 "(values(3) union all select i + 1 from n where i < 2000) "
                 "select 1, i, '学生', '理' from n"_s);
    clickNode(0, 0);
    choose(u"一个 PDF 文件，每人一页(&P)"_s);
    test.dialogs.file = test.file(u"一班.pdf"_s);
    support::ProgressCanceller canceller;
    trigger(u"ExportClass"_s);
    EXPECT_EQ(canceller.text, u"正在导出分析图：学生"_s);
    EXPECT_EQ(test.dialogs.shown.last(), u"提示: 已经取消。没有导出PDF文件。"_s);
    EXPECT_FALSE(QFile::exists(test.file(u"一班.pdf"_s)));
}

TEST_F(ChartsOfAClass, AreNotMadeWithoutAWish)
{
    clickNode(0, 0);
    choose(u"取消(&C)"_s);
    trigger(u"ExportClass"_s);
    EXPECT_EQ(test.dialogs.safeOf(u"导出成什么"_s), u"取消(&C)"_s);
    choose(u"一个 PDF 文件，每人一页(&P)"_s);
    trigger(u"ExportClass"_s);
    choose(u"文件夹，每人一张图片(&F)"_s);
    trigger(u"ExportClass"_s);
    EXPECT_EQ(test.dialogs.shown.size(), 3);
}

TEST_F(ChartsOfAClass, NeedAStudent)
{
    trigger(u"ExportClass"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"请先在左边选择一名学生，导出的是他所在的班。"_s});
}

TEST_F(ChartsOfAClass, AnUnwritablePlaceIsTold)
{
    clickNode(0, 0);
    choose(u"一个 PDF 文件，每人一页(&P)"_s);
    test.dialogs.file = test.file(u"absent/1.pdf"_s);
    trigger(u"ExportClass"_s);
    EXPECT_TRUE(test.dialogs.shown.last().contains(u"没有导出PDF文件。"_s));
}

} // namespace
