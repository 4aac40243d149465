#include "import/ui/PreviewScreen.h"

#include <QApplication>
#include <QClipboard>

#include "gui/ExamImportFixture.h"
#include "import/ui/FormDaoRuXinXi.h"
#include "platform/grid/GridText.h"
#include "platform/grid/ui/FlexGridView.h"
#include "workbooks/model/Application.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Answer;

/// The screen of the exam import, and the window of the preview once its button was pressed.
class PreviewFromTheScreen : public support::ExamImportFixture
{
protected:
    /// 王芳 as known, 陈静 by another name, a bad score and a new student.
    const Rows mixed = sheet({{1, 1, u"王芳"_s, 120, 90},
                              {1, 2, u"陈婧"_s, 151, 60},
                              {1, 10, u"赵六"_s, 1, 2},
                              {1, 9, u"钱七"_s, 3, 4}});

    /// Presses 预览… and does this in the window, which has to be left then.
    void inPreview(const std::function<void(QDialog&)>& step)
    {
        boxes.expect([this, step](QDialog& window) {
            EXPECT_EQ(window.objectName(), u"PreviewScreen"_s);
            preview = &window;
            view = window.findChild<grid::FlexGridView*>(u"gridPreview"_s);
            step(window);
        });
        press(u"buttonPreview"_s);
    }

    void pressInPreview(const QString& button)
    {
        QTest::mouseClick(preview->findChild<QPushButton*>(button), Qt::LeftButton);
    }

    QString label(const QString& name) { return preview->findChild<QLabel*>(name)->text(); }

    QStringList column(int col)
    {
        QStringList texts;
        for (int row = 1; row < view->grid().Rows(); ++row)
            texts.append(view->grid().TextMatrix(row, col));
        return texts;
    }

    void clickHeading(int col)
    {
        const QRect cell = view->visualRect(view->model()->index(0, col));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell.center());
    }

    QDialog* preview = nullptr;
    grid::FlexGridView* view = nullptr;
};

TEST_F(PreviewFromTheScreen, IsOfferedOnceAWorkbookIsOpen)
{
    auto* offered = find<QPushButton>(u"buttonPreview"_s);
    EXPECT_EQ(offered->text(), u"预览(&V)…"_s);
    EXPECT_FALSE(offered->isEnabled());
    choose(workbook(u"期末.xlsx"_s, mixed));
    EXPECT_TRUE(offered->isEnabled());
    find<QWidget>(u"Command2"_s)->setFocus();
    QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(form->focusWidget(), offered) << "behind the buttons that were there before it";
}

TEST_F(PreviewFromTheScreen, TellsWhatTheImportWouldDoAndWritesNothing)
{
    choose(workbook(u"期末.xlsx"_s, mixed));
    inPreview([this](QDialog& window) {
        EXPECT_EQ(window.windowTitle(), u"导入预览"_s);
        EXPECT_FALSE(window.findChild<QLabel*>(u"labelWarning"_s)->isVisible());
        EXPECT_EQ(label(u"labelHeadline"_s),
                  u"考试“期末”，“文”科，数据表“一年级”\n"
                  "表中 4 行：与成绩库一致 1 人，不认识的学生 2 人，姓名不一致 1 行，"
                  "有问题的单元格 1 处。"_s);
        EXPECT_EQ(column(0), (QStringList{u"不认识的学生"_s, u"不认识的学生"_s, u"姓名不一致"_s,
                                          u"有问题的单元格"_s}));
        EXPECT_EQ(window.focusWidget(), view);
        QTest::keyClick(view, Qt::Key_Escape);
    });
    EXPECT_EQ(scoreRows(u"*"_s), QString());
    EXPECT_EQ(backups(), QStringList());
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_TRUE(form->isVisible());
}

TEST_F(PreviewFromTheScreen, GoesOnWithTheImportOfTheSameRequest)
{
    choose(workbook(u"期末.xlsx"_s, two));
    inPreview([this](QDialog&) {
        acceptFullMarks();
        pressInPreview(u"buttonImport"_s);
    });
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(scoreRows(u"姓名,考试名称,语文"_s), u"王芳|期末|120 / 陈静|期末|-1"_s);
}

TEST_F(PreviewFromTheScreen, SaysLoudlyThatTheExamIsThere)
{
    library.addScores(u"期中"_s, 1, 1, {{u"考试编号"_s, 2}, {u"语文"_s, 60}});
    choose(workbook(u"期末.xlsx"_s, two));
    typeExam(u"期中"_s);
    inPreview([this](QDialog& window) {
        auto* warning = window.findChild<QLabel*>(u"labelWarning"_s);
        EXPECT_TRUE(warning->isVisible());
        EXPECT_TRUE(warning->font().bold());
        EXPECT_TRUE(warning->text().startsWith(u"成绩库里已经有考试“期中”（“文”科）！"_s));
        pressInPreview(u"buttonClose"_s);
    });
    pickLastExam();
    inPreview([this](QDialog&) {
        EXPECT_EQ(label(u"labelWarning"_s),
                  u"考试“期中”已经在成绩库里（“文”科）！导入会用表里的成绩改写原有的成绩。"_s);
        EXPECT_TRUE(column(7).contains(u"120"_s));
        pressInPreview(u"buttonClose"_s);
    });
    EXPECT_EQ(scoreRows(u"语文"_s), u"60"_s);
}

TEST_F(PreviewFromTheScreen, IsNarrowedByKeysSortedFoundAndCopied)
{
    choose(workbook(u"期末.xlsx"_s, mixed));
    inPreview([this](QDialog& window) {
        auto* kinds = window.findChild<QComboBox*>(u"comboKind"_s);
        EXPECT_EQ(kinds->itemText(0), u"全部"_s);
        EXPECT_EQ(kinds->itemText(1), u"不认识的学生（2）"_s);
        QTest::keyClick(&window, Qt::Key_K, Qt::AltModifier);
        EXPECT_EQ(window.focusWidget(), kinds);
        QTest::keyClick(kinds, Qt::Key_Down);
        EXPECT_EQ(column(3), (QStringList{u"10"_s, u"9"_s}));
        clickHeading(3);
        EXPECT_EQ(column(3), (QStringList{u"9"_s, u"10"_s}));
        EXPECT_EQ(view->grid().TextMatrix(0, 3), u"学号 ▲"_s);
        clickHeading(3);
        EXPECT_EQ(column(3), (QStringList{u"10"_s, u"9"_s}));
        view->setFocus();
        QTest::keyClick(view, Qt::Key_F, Qt::ControlModifier);
        for (const QChar letter : u"钱七"_s)
            QTest::sendKeyEvent(QTest::Click, window.focusWidget(), Qt::Key_unknown,
                                QString(letter), Qt::NoModifier);
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible()) << "Esc closes the bar alone";
        QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), u"钱七\r\n"_s);
        pressInPreview(u"buttonClose"_s);
    });
}

TEST_F(PreviewFromTheScreen, IsSavedAsAWorkbook)
{
    choose(workbook(u"期末.xlsx"_s, mixed));
    const QString path = library.file(u"预览.xlsx"_s);
    inPreview([&](QDialog&) {
        dialogs.file = path;
        pressInPreview(u"buttonSave"_s);
        EXPECT_EQ(dialogs.fileFilter, u"工作簿|*.xlsx"_s);
        dialogs.file = library.file(u"没有/预览.xlsx"_s);
        pressInPreview(u"buttonSave"_s);
        ASSERT_EQ(dialogs.failures.size(), 1);
        EXPECT_TRUE(dialogs.failures[0].startsWith(u"无法保存 "_s));
        EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Sub SavePreview/Import"_s));
        pressInPreview(u"buttonClose"_s);
    });
    excel::Application application;
    const excel::Worksheet& sheet = application.Workbooks().Open(path).Worksheets().Item(1);
    EXPECT_TRUE(sheet.Cells(1, 1).text().startsWith(u"考试“期末”"_s));
}

TEST_F(PreviewFromTheScreen, IsNoPartOfACommandAndKeepsToItsSheet)
{
    choose(workbook(u"期末.xlsx"_s, two));
    inPreview([this](QDialog&) {
        EXPECT_FALSE(screenDialogs.inCommand()) << "each save tells its own failure";
        form->chooseSheet(applications[0]->Workbooks().Item(1), u"说明"_s);
        EXPECT_EQ(find<QComboBox>(u"Combo1"_s)->currentText(), u"一年级"_s);
        pressInPreview(u"buttonClose"_s);
    });
    form->chooseSheet(applications[0]->Workbooks().Item(1), u"说明"_s);
    EXPECT_EQ(find<QComboBox>(u"Combo1"_s)->currentText(), u"说明"_s);
}

TEST_F(PreviewFromTheScreen, WhereTheImportWouldNotBeginNoWindowComes)
{
    choose(workbook(u"期末.xlsx"_s, {{u"班级"_s, u"学号"_s, u"名字"_s}}));
    press(u"buttonPreview"_s);
    EXPECT_EQ(dialogs.shown,
              QStringList{u"错误: 指定的工作表格式不对！\n\n前3列名称应为：班级,学号,姓名"_s});
    EXPECT_EQ(text(u"LabelFault"_s),
              u"这张数据表不是导入要求的样子。点“整理”，可以由它整理出能导入的表。"_s);
}

TEST_F(PreviewFromTheScreen, OfStudentsTellsWhoIsThereAndGoesOn)
{
    form = std::make_unique<importing::FormDaoRuXinXi>(library.scores, screenDialogs, applications,
                                                       &owner);
    form->show();
    const QString book = workbook(
        u"名单.xlsx"_s,
        {{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}, {1, 3, QString(10'000, u'长')}});
    choose(book);
    inPreview([this](QDialog&) {
        EXPECT_TRUE(
            label(u"labelWarning"_s).startsWith(u"名单里有 1 人的班级和学号成绩库里已经有了！"_s));
        EXPECT_TRUE(column(4).contains(QString(200, u'长') + u'…'));
        pressInPreview(u"buttonClose"_s);
    });
    EXPECT_EQ(library.rows(u"select count(*) from 信息表"_s), u"2"_s);
    inPreview([this](QDialog&) {
        dialogs.expect(u"的班级和学号在"_s, u"全部添加"_s);
        pressInPreview(u"buttonImport"_s);
    });
    EXPECT_EQ(library.rows(u"select count(*) from 信息表"_s), u"4"_s);
}

} // namespace
