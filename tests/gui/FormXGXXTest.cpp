#include "gui/RecordFixture.h"

namespace {

using namespace Qt::StringLiterals;

const QString question = u"学生信息有改动，还没有保存。"_s;
const QString saveTag = u" - Private Sub Command1_Click/FormXGXX"_s;

class RecordScreen : public support::RecordFixture
{
protected:
    RecordScreen() { open(); }

    QString stored(const QString& field, qint64 id = 1)
    {
        return test.rows(u"select %1 from 信息表 where ID=%2"_s.arg(field).arg(id));
    }
};

TEST_F(RecordScreen, ComesUpWithTheTreeAndTheLabelsAndNobodyShown)
{
    EXPECT_EQ(form->windowTitle(), u"修改学生信息"_s);
    EXPECT_EQ(tree->topLevelItemCount(), 2);
    EXPECT_EQ(tree->topLevelItem(0)->text(0), u"1班"_s);
    EXPECT_EQ(tree->topLevelItem(0)->child(1)->text(0), u"2李四"_s);
    EXPECT_EQ(selected(), u""_s);
    EXPECT_EQ(cell(0, 0), u"班级"_s);
    EXPECT_EQ(cell(14, 0), u"备注"_s);
    EXPECT_EQ(cell(2), u""_s);
    EXPECT_FALSE(box->isVisible());
    EXPECT_FALSE(image->isVisible());
    EXPECT_FALSE(find<QWidget>(u"Frame2"_s)->isVisible());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(RecordScreen, AStudentOfTheTreeIsShownByMouseAndByKeys)
{
    clickNode(0, 0);
    EXPECT_EQ(cell(2), u"王芳"_s);
    EXPECT_EQ(cell(PhotoRow), u"王芳.png"_s);
    EXPECT_EQ(photoColor(), QColor(Qt::red));
    QTest::keyClick(tree, Qt::Key_Down);
    EXPECT_EQ(cell(2), u"李四"_s);
    EXPECT_EQ(cell(PhotoRow), u""_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(RecordScreen, AClassChangesNothing)
{
    clickNode(0, 0);
    clickNode(1);
    EXPECT_EQ(cell(2), u"王芳"_s);
    EXPECT_EQ(photoColor(), QColor(Qt::red));
}

TEST_F(RecordScreen, AStudentWithoutAPhotoHasThePictureForNone)
{
    clickNode(0, 1);
    EXPECT_TRUE(image->isVisible());
    EXPECT_EQ(image->pixmap().size(), QImage(test.paths.dataFile(u"nopic.gif"_s)).size());
}

TEST_F(RecordScreen, ThePhotoIsShownWholeAtItsProportionsInTheMiddle)
{
    for (const QSize& size : {QSize(300, 100), QSize(100, 300)}) {
        store(1, u"a.png"_s, support::read(picture(u"a.png"_s, size, Qt::blue)));
        clickNode(0, 1);
        clickNode(0, 0);
        const QRect room = find<QFrame>(u"Picture1"_s)->contentsRect();
        const QRect place = image->geometry();
        EXPECT_TRUE(room.contains(place));
        EXPECT_TRUE(place.width() == room.width() || place.height() == room.height());
        EXPECT_NEAR(place.width() * size.height(), place.height() * size.width(), 300);
        EXPECT_LE((place.center() - room.center()).manhattanLength(), 2);
    }
}

TEST_F(RecordScreen, ACorruptPhotoIsToldAndTheRecordShownAllTheSame)
{
    store(1, u"a.png"_s, "no picture");
    clickNode(0, 0);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"照片不是图片，或已损坏，或太大。 - Sub ZoomPic/FormXGXX"_s});
    EXPECT_EQ(cell(2), u"王芳"_s);
    EXPECT_EQ(image->pixmap().size(), QImage(test.paths.dataFile(u"nopic.gif"_s)).size());
    clickNode(0, 1);
    EXPECT_EQ(test.dialogs.failures.size(), 1);
}

TEST_F(RecordScreen, TypedTextsAreSavedByTheButton)
{
    clickNode(0, 0);
    type(5, u"女"_s);
    EXPECT_EQ(cell(5), u"女"_s);
    type(14, u"学习 'O''k' -- 好"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.rows(u"select 性别, 备注 from 信息表 where ID=1"_s), u"女|学习 'O''k' -- 好"_s);
    EXPECT_EQ(result(), u"已保存"_s);
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
    type(5, u"男"_s);
    EXPECT_EQ(result(), u""_s);
}

TEST_F(RecordScreen, TheGridIsWorkedByKeysAlone)
{
    clickNode(0, 0);
    view->setFocus();
    view->select(12, 1, 12, 1);
    QTest::keyClick(view, Qt::Key_F2);
    ASSERT_TRUE(box->isVisible());
    QTest::keyClicks(box, u"Han"_s);
    QTest::keyClick(box, Qt::Key_Return);
    QTest::keyClicks(box, u"Xian"_s);
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_EQ(cell(12), u"Han"_s);
    EXPECT_EQ(cell(13), u""_s);
    QTest::keyClicks(view, u"Y"_s);
    EXPECT_EQ(cell(13), u"Y"_s);
    QTest::keyClick(box, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(box->text(), u"籍贯"_s);
    QTest::keyClick(box, Qt::Key_Escape);
    QTest::keyClick(form.get(), Qt::Key_M, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !result().isEmpty(); }));
    EXPECT_EQ(test.rows(u"select 民族, 籍贯 from 信息表 where ID=1"_s), u"Han|Y"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(RecordScreen, TheNameOfARowCanBeEditedToo)
{
    clickNode(0, 0);
    type(13, u"类别代码"_s, 0);
    type(13, u"2"_s);
    press(u"Command1"_s);
    EXPECT_EQ(stored(u"类别代码"_s), u"2"_s);
    EXPECT_EQ(stored(u"籍贯"_s), u"NULL"_s);
    clickNode(0, 1);
    EXPECT_EQ(cell(13), u"1"_s);
}

TEST_F(RecordScreen, ARefusedTextStaysToBePutRight)
{
    clickNode(0, 0);
    type(0, u"三"_s);
    type(5, u"女"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList{u"“三”不能存入列“班级”：不是数字。"_s + saveTag});
    EXPECT_EQ(test.rows(u"select 班级, 性别 from 信息表 where ID=1"_s), u"1|女"_s);
    EXPECT_EQ(cell(0), u"三"_s);
    EXPECT_EQ(result(), u"已保存，有的没有存入"_s);
    type(0, u"5"_s);
    press(u"Command1"_s);
    EXPECT_EQ(stored(u"班级"_s), u"5"_s);
}

TEST_F(RecordScreen, ALongRemarkIsEditedWhole)
{
    test.execute(u"update 信息表 set 备注='%1' where ID=1"_s.arg(QString(40'000, u'长')));
    clickNode(0, 0);
    clickCell(14);
    QTest::keyClicks(box, u"x"_s);
    press(u"Command1"_s);
    EXPECT_EQ(stored(u"length(备注)"_s), u"40001"_s);
}

TEST_F(RecordScreen, TheLineBreaksOfARemarkOutliveItsEditing)
{
    test.execute(u"update 信息表 set 备注='一' || char(10) || '二' where ID=1"_s);
    clickNode(0, 0);
    clickCell(14);
    QTest::keyClick(box, Qt::Key_End);
    QTest::keyClicks(box, u"x"_s);
    press(u"Command1"_s);
    EXPECT_EQ(stored(u"备注"_s), u"一\n二x"_s);
}

TEST_F(RecordScreen, TheTreeFollowsANewNameNumberOrClass)
{
    clickNode(0, 0);
    type(2, u"王方"_s);
    type(1, u"7"_s);
    test.dialogs.expect(u"改名为"_s, u"以前的成绩也改"_s);
    press(u"Command1"_s);
    EXPECT_EQ(selected(), u"7王方"_s);
    EXPECT_EQ(test.rows(u"select 姓名 from 成绩表"_s), u"王方"_s);
    type(0, u"3"_s);
    press(u"Command1"_s);
    EXPECT_EQ(tree->topLevelItemCount(), 3);
    EXPECT_EQ(tree->topLevelItem(2)->text(0), u"3班"_s);
    EXPECT_EQ(selected(), u"7王方"_s);
}

TEST_F(RecordScreen, WithoutAStudentTheButtonAsksForOne)
{
    press(u"Command1"_s);
    clickCell(PhotoRow);
    EXPECT_EQ(test.dialogs.shown, QStringList(2, u"请先选择一名学生。"_s));
}

TEST_F(RecordScreen, TheBlockOfCellsIsCopied)
{
    clickNode(0, 0);
    view->setFocus();
    view->select(0, 0, 2, 1);
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"班级\t1\r\n学号\t1\r\n姓名\t王芳\r\n"_s);
}

class ChosenPhoto : public RecordScreen
{
protected:
    ChosenPhoto() { clickNode(0, 1); }

    void choose(const QString& path)
    {
        test.dialogs.file = path;
        clickCell(PhotoRow);
    }
};

TEST_F(ChosenPhoto, IsShownAtOnceAndSavedWithTheRecord)
{
    const QString path = picture(u"李四.png"_s, {30, 40}, Qt::green);
    choose(path);
    EXPECT_EQ(test.dialogs.fileTitle, u"打开文件"_s);
    EXPECT_EQ(test.dialogs.fileFilter, u"所有图片文件(*.*)|*.*|"_s);
    EXPECT_EQ(cell(PhotoRow), path);
    EXPECT_EQ(photoColor(), QColor(Qt::green));
    EXPECT_EQ(stored(u"照片名"_s, 2), u"NULL"_s);
    press(u"Command1"_s);
    EXPECT_EQ(stored(u"照片名"_s, 2), u"李四.png"_s);
    EXPECT_EQ(stored(u"hex(照片)"_s, 2),
              QString::fromLatin1(support::read(path).toHex()).toUpper());
    EXPECT_EQ(cell(PhotoRow), u"李四.png"_s);
    EXPECT_EQ(photoColor(), QColor(Qt::green));
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(ChosenPhoto, IsAskedForByKeysAndFromTheLabelToo)
{
    test.dialogs.file = picture(u"a.png"_s, {30, 40}, Qt::green);
    view->setFocus();
    view->select(5, 1, 5, 1);
    QTest::keyClick(view, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_EQ(cell(PhotoRow), *test.dialogs.file);
    test.dialogs.file = picture(u"b.png"_s, {30, 40}, Qt::blue);
    clickCell(PhotoRow, 0);
    EXPECT_EQ(cell(PhotoRow), *test.dialogs.file);
    EXPECT_EQ(photoColor(), QColor(Qt::blue));
    EXPECT_FALSE(box->isVisible());
}

TEST_F(ChosenPhoto, ACancelledDialogChangesNothing)
{
    clickNode(0, 0);
    test.dialogs.file = std::nullopt;
    clickCell(PhotoRow);
    EXPECT_EQ(cell(PhotoRow), u"王芳.png"_s);
    EXPECT_EQ(photoColor(), QColor(Qt::red));
    press(u"Command1"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
    EXPECT_EQ(stored(u"照片名"_s), u"王芳.png"_s);
}

TEST_F(ChosenPhoto, WhatIsNoPictureIsRefusedWithItsName)
{
    clickNode(0, 0);
    support::write(test.file(u"成绩.xls"_s), "no picture");
    choose(test.file(u"成绩.xls"_s));
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"照片文件“%1”不是图片，或已损坏。"_s.arg(test.file(u"成绩.xls"_s))});
    EXPECT_EQ(cell(PhotoRow), u"王芳.png"_s);
    EXPECT_EQ(photoColor(), QColor(Qt::red));
}

TEST_F(ChosenPhoto, AFileThatDoesNotExistIsToldByTheSave)
{
    const QString path = test.file(u"没有.jpg"_s);
    choose(path);
    EXPECT_EQ(test.dialogs.failures, QStringList{u"照片文件不存在。 - Sub ZoomPic/FormXGXX"_s});
    type(5, u"男"_s);
    test.dialogs.shown.clear();
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"照片文件不存在：\n"_s + path});
    EXPECT_EQ(test.rows(u"select 性别, 照片名 from 信息表 where ID=2"_s), u"男|NULL"_s);
    EXPECT_EQ(result(), u"已保存，有的没有存入"_s);
}

TEST_F(ChosenPhoto, ALargeOneCanGoInSmaller)
{
    test.dialogs.expect(u"很大"_s, u"改存较小的图片"_s);
    choose(picture(u"a.png"_s, {2400, 1200}, Qt::green));
    press(u"Command1"_s);
    clickNode(0, 0);
    clickNode(0, 1);
    EXPECT_EQ(photoColor().green(), 255);
    QImage smaller;
    smaller.loadFromData(QByteArray::fromHex(stored(u"hex(照片)"_s, 2).toLatin1()));
    EXPECT_EQ(smaller.height(), 600);
}

class UnsavedRecord : public RecordScreen
{
protected:
    UnsavedRecord()
    {
        clickNode(0, 0);
        type(5, u"女"_s);
    }
};

TEST_F(UnsavedRecord, IsSavedBeforeAnotherStudentIfTheUserSaysSo)
{
    test.dialogs.expect(question, u"保存"_s);
    clickNode(0, 1);
    EXPECT_EQ(stored(u"性别"_s), u"女"_s);
    EXPECT_EQ(cell(2), u"李四"_s);
    EXPECT_EQ(selected(), u"2李四"_s);
}

TEST_F(UnsavedRecord, IsThrownAwayIfTheUserSaysSo)
{
    test.dialogs.expect(question, u"不保存"_s);
    clickNode(0, 1);
    EXPECT_EQ(stored(u"性别"_s), u"NULL"_s);
    EXPECT_EQ(cell(5), u""_s);
    EXPECT_EQ(selected(), u"2李四"_s);
}

TEST_F(UnsavedRecord, StaysIfTheUserCancels)
{
    test.dialogs.expect(question, u"取消"_s);
    clickNode(0, 1);
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(cell(5), u"女"_s);
    EXPECT_EQ(selected(), u"1王芳"_s);
    // The same student, or a class, is no reason to ask.
    clickNode(0, 0);
    clickNode(1);
    EXPECT_EQ(cell(5), u"女"_s);
    EXPECT_EQ(test.dialogs.questions, QStringList{question});
}

TEST_F(UnsavedRecord, StaysIfItCouldNotBeSavedWhole)
{
    type(0, u"三"_s);
    test.dialogs.expect(question, u"保存"_s);
    clickNode(0, 1);
    EXPECT_EQ(cell(2), u"王芳"_s);
    EXPECT_EQ(cell(0), u"三"_s);
    EXPECT_EQ(selected(), u"1王芳"_s);
    EXPECT_EQ(stored(u"性别"_s), u"女"_s);
}

TEST_F(UnsavedRecord, IsAskedAboutWhenTheScreenCloses)
{
    test.dialogs.expect(question, u"取消"_s);
    press(u"Command2"_s);
    EXPECT_TRUE(form->isVisible());
    test.dialogs.expect(question, u"不保存"_s);
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(stored(u"性别"_s), u"NULL"_s);
}

TEST_F(UnsavedRecord, IsSavedWhenTheScreenCloses)
{
    test.dialogs.expect(question, u"保存"_s);
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(stored(u"性别"_s), u"女"_s);
}

TEST_F(UnsavedRecord, OutlivesAChangeThatAnotherScreenMakes)
{
    test.execute(u"update 信息表 set 民族='回' where ID=1"_s);
    test.addStudent(2, 2, u"赵六"_s, u"理"_s);
    test.scores.notifyChanged();
    EXPECT_EQ(cell(5), u"女"_s);
    EXPECT_EQ(cell(12), u"回"_s);
    EXPECT_EQ(tree->topLevelItem(1)->childCount(), 2);
    EXPECT_EQ(selected(), u"1王芳"_s);
}

TEST_F(RecordScreen, AnOpenCellDoesNotGiveBackWhatAnotherScreenHasChanged)
{
    clickNode(0, 0);
    clickCell(1);
    test.execute(u"update 信息表 set 学号=7 where ID=1"_s);
    test.scores.notifyChanged();
    EXPECT_FALSE(box->isVisible());
    EXPECT_EQ(cell(1), u"7"_s);
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_EQ(cell(1), u"7"_s);
}

TEST_F(RecordScreen, AStudentWhoWentIsToldAndGoesFromTheTree)
{
    clickNode(0, 0);
    test.execute(u"delete from 信息表 where ID=2"_s);
    clickNode(0, 1);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库里已经没有这名学生了。"_s});
    EXPECT_EQ(tree->topLevelItem(0)->childCount(), 1);
    EXPECT_EQ(cell(2), u""_s);
    EXPECT_FALSE(image->isVisible());
}

class PhotoCheck : public support::RecordFixture
{
protected:
    PhotoCheck() { openWithList(); }
};

TEST_F(PhotoCheck, ListsTheStudentsWithoutAPhotoBesideTheRecord)
{
    EXPECT_TRUE(find<QWidget>(u"Frame2"_s)->isVisible());
    EXPECT_EQ(find<QGroupBox>(u"Frame2"_s)->title(), u"无照片名单(&N)"_s);
    EXPECT_EQ(listed(), (QStringList{u"李四"_s, u"陈静"_s}));
    EXPECT_EQ(list->item(1)->toolTip(), u"2 班 1 号"_s);
    clickEntry(1);
    EXPECT_EQ(cell(2), u"陈静"_s);
    EXPECT_EQ(selected(), u"1陈静"_s);
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(cell(2), u"李四"_s);
    clickNode(0, 0);
    EXPECT_EQ(cell(2), u"王芳"_s);
    clickEntry(0);
    EXPECT_EQ(cell(2), u"李四"_s);
}

TEST_F(PhotoCheck, AStudentWhoGetsAPhotoLeavesTheList)
{
    clickEntry(0);
    test.dialogs.file = picture(u"李四.png"_s, {30, 40}, Qt::green);
    clickCell(PhotoRow);
    press(u"Command1"_s);
    EXPECT_EQ(listed(), QStringList{u"陈静"_s});
    EXPECT_EQ(cell(2), u"李四"_s);
    clickEntry(0);
    EXPECT_EQ(cell(2), u"陈静"_s);
}

TEST_F(PhotoCheck, CancelKeepsTheStudentAndTheListCanBeClickedAgain)
{
    clickEntry(0);
    type(5, u"男"_s);
    test.dialogs.expect(question, u"取消"_s);
    clickEntry(1);
    EXPECT_EQ(cell(2), u"李四"_s);
    test.dialogs.expect(question, u"不保存"_s);
    clickEntry(1);
    EXPECT_EQ(cell(2), u"陈静"_s);
}

TEST_F(PhotoCheck, IsEmptyWhereAllHaveOne)
{
    test.execute(u"update 信息表 set 照片名='a.jpg'"_s);
    form->listWithoutPhoto();
    EXPECT_TRUE(find<QWidget>(u"Frame2"_s)->isVisible());
    EXPECT_EQ(listed(), QStringList());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(PhotoCheck, AnotherLibraryClosesTheScreen)
{
    clickEntry(0);
    type(5, u"男"_s);
    test.scores.Conn.Close();
    test.scores.notifyChanged();
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(PhotoCheck, TheSameLibraryOpenedAgainKeepsTheRecord)
{
    clickEntry(0);
    type(5, u"男"_s);
    test.scores.OpenDB();
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(cell(5), u"男"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.rows(u"select 性别 from 信息表 where ID=2"_s), u"男"_s);
}

} // namespace
