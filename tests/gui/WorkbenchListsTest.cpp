#include <QFile>

#include "gui/ProgressCanceller.h"
#include "gui/WorkbenchScreen.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Answer;

const QString exam = u"select * from 成绩表 where  ( 考试名称='期中')"_s;
const QString classes = u" and ( 班级=1 or  班级=2)"_s;
const QString categories = u" and (类别代码=1)"_s;

/// What the lists of the workbench do when they are used by hand.
class WorkbenchLists : public support::WorkbenchScreen
{
protected:
    QString shownIn(const QString& combo) { return find<QComboBox>(combo)->currentText(); }

    void typeStatement()
    {
        find<QPlainTextEdit>(u"Text1"_s)->setPlainText(u"select * from 成绩表"_s);
    }

    /// Makes sixteen exams of the two.
    void addExams()
    {
        for (const int exams : {2, 4, 8}) {
            test.execute(
                u"insert into 考试名称表(考试名称,科类,考试编号,语文,总分) select "
                "考试名称 || '%1',科类,考试编号+%1,语文,总分 from 考试名称表"_s.arg(exams));
            test.execute(
                u"insert into 成绩表(班级,学号,姓名,类别代码,科类,id,考试名称,语文) select "
                "班级,学号,姓名,类别代码,科类,id,考试名称 || '%1',语文 from 成绩表"_s.arg(exams));
        }
        test.reload();
        form->init();
    }

    /// The entries of a list that are selected.
    QStringList selected(const QString& list)
    {
        QStringList texts;
        for (const QListWidgetItem* item : find<QListWidget>(list)->selectedItems())
            texts.append(item->text());
        return texts;
    }

    /// The captions of the stream options that can be seen.
    QStringList shownStreams()
    {
        QStringList captions;
        for (int i = 0; i < 3; ++i) {
            const auto* option = find<QRadioButton>(u"OptionButton1_%1"_s.arg(i));
            if (option->isVisible())
                captions.append(option->text());
        }
        return captions;
    }

    QString checkedStream()
    {
        QStringList captions;
        for (const QRadioButton* option : form->findChildren<QRadioButton*>()) {
            if (option->isChecked())
                captions.append(option->text());
        }
        return captions.join(u',');
    }
};

TEST_F(WorkbenchLists, TheStatisticsItemStaysWhateverElseIsChosen)
{
    pick(u"Combo3"_s, u"考试人数"_s);
    chooseStream(1);
    EXPECT_EQ(shownIn(u"Combo3"_s), u"考试人数"_s);
    press(u"CommandDown"_s);
    EXPECT_EQ(shownIn(u"Combo3"_s), u"考试人数"_s);
    press(u"CommandUP"_s);
    clickItem(u"ListFW"_s, 0);
    chooseStream(0);
    press(u"CommandZXTJ"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(grid.TextMatrix(2, 1), u"1/0/1"_s);
}

TEST_F(WorkbenchLists, TheItemThatIsShownIsTheOneThatRuns)
{
    pick(u"Combo3"_s, u"考试人数"_s);
    press(u"CommandZXTJ"_s);
    pick(u"Combo3"_s, u"各科最低分"_s);
    chooseStream(1);
    press(u"CommandZXTJ"_s);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"文科各科最低分"_s);
}

TEST_F(WorkbenchLists, AChangeOfTheLibraryForgetsTheStatisticsItem)
{
    pick(u"Combo3"_s, u"考试人数"_s);
    form->init();
    EXPECT_EQ(find<QComboBox>(u"Combo3"_s)->currentIndex(), -1);
    EXPECT_EQ(find<QComboBox>(u"Combo3"_s)->placeholderText(), u"请选择要统计的项目"_s);
}

TEST_F(WorkbenchLists, SortKeysAndTheirDirectionsOrderTheStatement)
{
    pick(u"Combo1_0"_s, u"语文"_s);
    EXPECT_EQ(sql(), exam + classes + categories + u" order by 语文 ASC"_s);
    pick(u"Combo2_0"_s, u"降序"_s);
    pick(u"Combo1_2"_s, u"姓名"_s);
    EXPECT_EQ(sql(), exam + classes + categories + u" order by 语文 DESC,姓名 ASC"_s);
    press(u"CommandLLCJ"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(WorkbenchLists, DeleteTakesASortKeyBack)
{
    pick(u"Combo1_0"_s, u"语文"_s);
    pick(u"Combo1_1"_s, u"姓名"_s);
    QTest::keyClick(find<QComboBox>(u"Combo1_0"_s), Qt::Key_Delete);
    EXPECT_EQ(sql(), exam + classes + categories + u" order by 姓名 ASC"_s);
    EXPECT_EQ(find<QComboBox>(u"Combo1_0"_s)->placeholderText(), u"请选择项目"_s);
    QTest::keyClick(find<QComboBox>(u"Combo1_1"_s), Qt::Key_Backspace);
    EXPECT_EQ(sql(), exam + classes + categories);
    QTest::keyClick(find<QComboBox>(u"Combo2_0"_s), Qt::Key_Delete);
    EXPECT_EQ(shownIn(u"Combo2_0"_s), u"升序"_s) << "a direction stays";
}

TEST_F(WorkbenchLists, ACategoryThatIsClickedIsTheOnlyOne)
{
    test.addStudent(3, 2, u"丙"_s, u"理"_s, 2);
    form->init();
    EXPECT_EQ(selected(u"ListLB"_s), (QStringList{u"1"_s, u"2"_s}));
    clickItem(u"ListLB"_s, 1);
    EXPECT_EQ(sql(), exam + classes + u" and (类别代码=2)"_s);
    EXPECT_EQ(test.scores.settings.CategoryFilter, u" and (类别代码=2)"_s);
    clickItem(u"ListLB"_s, 1, Qt::ControlModifier);
    EXPECT_EQ(sql(), exam + classes);
}

TEST_F(WorkbenchLists, TheDisplayItemThatIsClickedDecidesTheColumns)
{
    clickItem(u"ListXM"_s, 2);
    press(u"CommandLLCJ"_s);
    QStringList headings;
    for (int col = 0; col < grid.Cols(); ++col)
        headings.append(grid.TextMatrix(0, col));
    EXPECT_TRUE(headings.contains(u"语文T分"_s)) << headings.join(u' ').toStdString();
    EXPECT_FALSE(headings.contains(u"语文年名"_s));
}

TEST_F(WorkbenchLists, AClickOnWhatIsChosenBringsTheStatementBack)
{
    clickItem(u"ListFW"_s, 0);
    const QString statement = exam + u" and ( 班级=1)"_s + categories;
    for (const QString& list : {u"ListKSMC"_s, u"ListFW"_s, u"ListLB"_s, u"ListXM"_s}) {
        typeStatement();
        clickItem(list, 0);
        EXPECT_EQ(sql(), statement) << list.toStdString();
    }
    pick(u"Combo1_1"_s, u"语文"_s);
    const QString ordered = statement + u" order by 语文 ASC"_s;
    for (const auto& [combo, entry] :
         {std::pair{u"Combo1_1"_s, u"语文"_s}, std::pair{u"Combo2_1"_s, u"升序"_s}}) {
        typeStatement();
        pick(combo, entry);
        EXPECT_EQ(sql(), ordered) << combo.toStdString();
    }
}

TEST_F(WorkbenchLists, TheStatisticsItemLeavesATypedStatement)
{
    typeStatement();
    pick(u"Combo3"_s, u"考试人数"_s);
    EXPECT_EQ(sql(), u"select * from 成绩表"_s);
}

TEST_F(WorkbenchLists, TheArrowDownMovesTheSelectedExam)
{
    press(u"CommandDown"_s);
    auto* exams = find<QListWidget>(u"ListKSMC"_s);
    EXPECT_EQ(exams->item(0)->text(), u"期末"_s);
    EXPECT_EQ(exams->item(1)->text(), u"期中"_s);
    EXPECT_EQ(selected(u"ListKSMC"_s), QStringList{u"期中"_s});
    press(u"CommandDown"_s);
    EXPECT_EQ(exams->item(1)->text(), u"期中"_s) << "the last one stays";
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(WorkbenchLists, SavingTheOrderAsksFirst)
{
    test.dialogs.expect(u"确实要保存修改吗"_s, Answer::Cancel);
    press(u"Command1"_s);
    const QString question = u"提示: 确实要保存修改吗？保存后不可恢复，最好在保存前备份数据库。"_s;
    EXPECT_EQ(test.dialogs.shown, QStringList{question});
    EXPECT_EQ(test.dialogs.look(u"确实要保存修改吗"_s).buttons, runtime::Buttons::OkCancel);
}

/// The statements lack an apostrophe, so that each of them fails and no number is written.
TEST_F(WorkbenchLists, SavingTheOrderTellsOfEachStatementAndThatItIsDone)
{
    press(u"CommandDown"_s);
    test.dialogs.expect(u"确实要保存修改吗"_s, Answer::Ok);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.failures.size(), 4);
    for (const QString& failure : std::as_const(test.dialogs.failures))
        EXPECT_TRUE(failure.endsWith(u" - Private Sub Command1_Click/FormKaoShi"_s))
            << failure.toStdString();
    EXPECT_EQ(test.dialogs.shown.last(), u"保存完毕！"_s);
    EXPECT_EQ(test.rows(u"select distinct 考试名称,考试编号 from 考试名称表"_s),
              u"期中|1 / 期末|2"_s);
}

TEST_F(WorkbenchLists, AQuerySaysWhetherTheWorkbenchStepsAside)
{
    QSignalSpy filled(form.get(), &workbench::FormKaoShi::gridFilled);
    press(u"CommandLLCJ"_s);
    EXPECT_EQ(filled.takeFirst(), QVariantList{QVariant::fromValue(workbench::AfterQuery::Stay)});
    QTest::mouseClick(find<QWidget>(u"CheckMin"_s), Qt::LeftButton, {}, QPoint(8, 8));
    press(u"CommandLLCJ"_s);
    EXPECT_EQ(filled.takeFirst(),
              QVariantList{QVariant::fromValue(workbench::AfterQuery::Minimise)});
}

TEST_F(WorkbenchLists, AMissingBackgroundIsToldAndTheWorkbenchComesUp)
{
    const QString picture = test.paths.dataFile(u"bj1.jpg"_s);
    ASSERT_TRUE(QFile::remove(picture));
    const workbench::FormKaoShi second(test.scores, screenDialogs, applications, grid);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"找不到图片文件“"_s + picture
                                              + u"”，或者它已损坏。"
                                                " - Private Sub Form_Load/FormKaoShi"_s});
    EXPECT_EQ(second.findChild<QListWidget*>(u"ListKSMC"_s)->count(), 2);
}

TEST_F(WorkbenchLists, CancellingTheTotalsLeavesTheOtherExamsAndNoTextBehind)
{
    addExams();
    multiplyScores(14);
    auto* exams = find<QListWidget>(u"ListKSMC"_s);
    ASSERT_EQ(exams->count(), 16);
    exams->selectAll();
    const support::ProgressCanceller canceller;
    press(u"CommandJSZF"_s);
    EXPECT_NE(canceller.text, QString());
    EXPECT_EQ(test.dialogs.shown, QStringList()) << "nothing is said to be complete";
    EXPECT_FALSE(find<QWidget>(u"Picture1"_s)->isVisible());
    EXPECT_EQ(find<QLabel>(u"LabelXX"_s)->text(), QString());
    EXPECT_EQ(form->findChild<QDialog*>(u"ProgressWindow"_s), nullptr);
    const QString last = exams->item(15)->text();
    EXPECT_EQ(test.rows(u"select distinct 语文年名 from 成绩表 where 考试名称='%1'"_s.arg(last)),
              u"NULL"_s);
    EXPECT_TRUE(find<QPushButton>(u"CommandLLCJ"_s)->isEnabled());
}

TEST_F(WorkbenchLists, OneDisplayItemIsAlwaysChosen)
{
    for (const Qt::KeyboardModifiers keys : {Qt::ControlModifier, Qt::ShiftModifier}) {
        clickItem(u"ListXM"_s, 0, keys);
        EXPECT_EQ(selected(u"ListXM"_s).size(), 1) << int(keys);
    }
    QTest::keyClick(find<QListWidget>(u"ListXM"_s), Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(selected(u"ListXM"_s).size(), 1);
    EXPECT_EQ(find<QListWidget>(u"ListXM"_s)->currentRow(), 0);
    clickItem(u"ListXM"_s, 2);
    EXPECT_EQ(selected(u"ListXM"_s), QStringList{find<QListWidget>(u"ListXM"_s)->item(2)->text()});
}

TEST_F(WorkbenchLists, AClickBelowTheEntriesChangesNothing)
{
    const QString statement = sql();
    for (const QString& name : {u"ListKSMC"_s, u"ListFW"_s, u"ListLB"_s, u"ListXM"_s}) {
        const QStringList before = selected(name);
        EXPECT_FALSE(before.isEmpty()) << name.toStdString();
        auto* list = find<QListWidget>(name);
        list->setMinimumHeight(list->sizeHintForRow(0) * (list->count() + 4));
        QApplication::processEvents();
        const QPoint ground(5, list->viewport()->height() - 3);
        ASSERT_FALSE(list->indexAt(ground).isValid()) << name.toStdString();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, ground);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, ground);
        EXPECT_EQ(selected(name), before) << name.toStdString();
    }
    EXPECT_EQ(sql(), statement);
}

TEST_F(WorkbenchLists, AStreamWithAnAmpersandIsShownAsItStandsAndTakesNoAccessKey)
{
    test.execute(u"update 信息表 set 科类='A&B' where 科类='理'"_s);
    test.reload();
    form->init();
    QStringList captions;
    for (int i = 1; i <= 2; ++i) {
        const auto* option = find<QRadioButton>(u"OptionButton1_%1"_s.arg(i));
        EXPECT_TRUE(option->shortcut().isEmpty()) << option->shortcut().toString().toStdString();
        captions.append(option->text());
    }
    EXPECT_TRUE(captions.contains(u"A&&B"_s)) << captions.join(u' ').toStdString();
}

TEST_F(WorkbenchLists, TheTextOfTheRunningWorkIsShownAsItStands)
{
    EXPECT_EQ(find<QLabel>(u"LabelXX"_s)->textFormat(), Qt::PlainText);
}

TEST_F(WorkbenchLists, AStreamHasItsOptionAsLongAsTheLibraryHasTheStream)
{
    EXPECT_EQ(shownStreams(), (QStringList{u"全"_s, u"文"_s, u"理"_s}));
    test.execute(u"delete from 信息表 where 科类='理'"_s);
    test.reload();
    form->init();
    EXPECT_EQ(shownStreams(), (QStringList{u"全"_s, u"文"_s}));
}

TEST_F(WorkbenchLists, TheChosenStreamIsTheOneThatIsChecked)
{
    EXPECT_EQ(checkedStream(), u"全"_s);
    chooseStream(2);
    EXPECT_EQ(checkedStream(), u"理"_s);
    press(u"CommandDown"_s);
    EXPECT_EQ(checkedStream(), u"理"_s) << "the lists are shown anew";
}

} // namespace
