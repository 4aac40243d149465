#include "platform/widgets/ScreenDialogs.h"

#include <algorithm>

#include <QCheckBox>
#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/ModalBoxes.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trap.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::Buttons;
using runtime::FileMode;
using runtime::Icon;

QMessageBox& box(QDialog& window)
{
    return dynamic_cast<QMessageBox&>(window);
}

class ScreenDialogs : public testing::Test
{
protected:
    /// The next box is answered by this button.
    void press(QMessageBox::StandardButton button)
    {
        boxes.expect([button](QDialog& window) {
            QTest::mouseClick(box(window).button(button), Qt::LeftButton);
        });
    }

    /// The next box is a failure and is answered with the quiet check box ticked or not.
    void passOver(bool ticked)
    {
        boxes.expect([ticked](QDialog& window) {
            QCheckBox* quiet = box(window).checkBox();
            ASSERT_NE(quiet, nullptr);
            EXPECT_FALSE(quiet->isChecked());
            quiet->setChecked(ticked);
            box(window).accept();
        });
    }

    const runtime::Choice skipOrAll{
        .text = u"<b>甲</b>"_s, .buttons = {u"跳过"_s, u"全部"_s, u"取消"_s}, .safe = 2};
    support::ModalBoxes boxes;
    widgets::ScreenDialogs dialogs;
};

TEST_F(ScreenDialogs, ABoxHasItsButtonsInChineseAndTheSafeOneAsDefault)
{
    struct Case
    {
        Buttons buttons;
        QStringList captions;
        QString defaultButton;
    };
    const std::vector<Case> cases{
        {Buttons::Ok, {u"确定"_s}, u"确定"_s},
        {Buttons::OkCancel, {u"取消"_s, u"确定"_s}, u"取消"_s},
        {Buttons::YesNo, {u"否"_s, u"是"_s}, u"否"_s},
        {Buttons::YesNoCancel, {u"取消"_s, u"否"_s, u"是"_s}, u"取消"_s},
    };
    const auto caption = [](const QAbstractButton* button) {
        return button->text().section(u'(', 0, 0).remove(u'&');
    };
    for (const Case& expected : cases) {
        boxes.expect([&](QDialog& window) {
            QStringList captions;
            for (const QAbstractButton* button : box(window).buttons()) {
                captions.append(caption(button));
                const bool chosen = dynamic_cast<const QPushButton*>(button)->isDefault();
                EXPECT_EQ(chosen, caption(button) == expected.defaultButton);
            }
            captions.sort();
            QStringList wanted = expected.captions;
            wanted.sort();
            EXPECT_EQ(captions, wanted);
            box(window).accept();
        });
        dialogs.message(u"文"_s, {}, expected.buttons, Icon::None);
    }
    EXPECT_EQ(boxes.count, 4);
}

TEST_F(ScreenDialogs, ThePressedButtonIsTheAnswer)
{
    const std::vector<std::tuple<Buttons, QMessageBox::StandardButton, Answer>> cases{
        {Buttons::Ok, QMessageBox::Ok, Answer::Ok},
        {Buttons::OkCancel, QMessageBox::Ok, Answer::Ok},
        {Buttons::OkCancel, QMessageBox::Cancel, Answer::Cancel},
        {Buttons::YesNo, QMessageBox::Yes, Answer::Yes},
        {Buttons::YesNo, QMessageBox::No, Answer::No},
        {Buttons::YesNoCancel, QMessageBox::Cancel, Answer::Cancel},
    };
    for (const auto& [buttons, button, answer] : cases) {
        press(button);
        EXPECT_EQ(runtime::MsgBox(u"文"_s, {}, buttons), answer);
    }
}

TEST_F(ScreenDialogs, EscGivesTheSafeAnswer)
{
    const std::vector<std::pair<Buttons, Answer>> cases{{Buttons::Ok, Answer::Ok},
                                                        {Buttons::OkCancel, Answer::Cancel},
                                                        {Buttons::YesNo, Answer::No},
                                                        {Buttons::YesNoCancel, Answer::Cancel}};
    for (const auto& [buttons, answer] : cases) {
        boxes.expect([](QDialog& window) { QTest::keyClick(&window, Qt::Key_Escape); });
        EXPECT_EQ(runtime::MsgBox(u"文"_s, {}, buttons), answer);
    }
}

TEST_F(ScreenDialogs, ABoxShowsItsTextAsItStandsUnderItsTitle)
{
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(box(window).text(), u"<b>甲</b>"_s);
        EXPECT_EQ(box(window).textFormat(), Qt::PlainText);
        EXPECT_EQ(window.windowTitle(), u"错误"_s);
        EXPECT_EQ(box(window).icon(), QMessageBox::Critical);
        window.accept();
    });
    dialogs.message(u"<b>甲</b>"_s, u"错误"_s, Buttons::Ok, Icon::Critical);
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(window.windowTitle(), u"云杉学业册"_s);
        window.accept();
    });
    dialogs.message(u"文"_s, {}, Buttons::Ok, Icon::None);
}

TEST_F(ScreenDialogs, AChoiceShowsItsButtonsInOrderAndItsTextAsItStands)
{
    boxes.expect([](QDialog& window) {
        QStringList captions;
        QList<QPushButton*> buttons = window.findChildren<QPushButton*>();
        std::ranges::sort(buttons, {}, [](const QPushButton* button) { return button->x(); });
        for (const QPushButton* button : buttons) {
            captions.append(button->text());
            EXPECT_EQ(button->isDefault(), button->text() == u"取消"_s);
        }
        EXPECT_EQ(captions, (QStringList{u"跳过"_s, u"全部"_s, u"取消"_s}));
        EXPECT_EQ(box(window).text(), u"<b>甲</b>"_s);
        EXPECT_EQ(box(window).textFormat(), Qt::PlainText);
        EXPECT_EQ(window.windowTitle(), u"云杉学业册"_s);
        QTest::mouseClick(buttons[1], Qt::LeftButton);
    });
    EXPECT_EQ(dialogs.choose(skipOrAll), 1);
}

TEST_F(ScreenDialogs, AChoiceThatIsNotMadeGivesTheSafeAnswer)
{
    for (const int safe : {0, 1, 2}) {
        runtime::Choice choice = skipOrAll;
        choice.safe = safe;
        boxes.expect([](QDialog& window) { QTest::keyClick(&window, Qt::Key_Escape); });
        EXPECT_EQ(dialogs.choose(choice), safe);
        boxes.expect([](QDialog& window) { window.close(); });
        EXPECT_EQ(dialogs.choose(choice), safe);
        boxes.expect([](QDialog& window) { QTest::keyClick(&window, Qt::Key_Return); });
        EXPECT_EQ(dialogs.choose(choice), safe);
    }
}

TEST_F(ScreenDialogs, ABoxWithALongTextFitsASmallScreenAndShowsItsButtons)
{
    const auto fits = [this] {
        boxes.expect([](QDialog& window) {
            EXPECT_LE(window.width(), 1024);
            EXPECT_LE(window.height(), 700);
            for (const QAbstractButton* button : box(window).buttons()) {
                const QPoint place = button->mapTo(&window, QPoint());
                EXPECT_TRUE(window.rect().contains(QRect(place, button->size())));
            }
            EXPECT_TRUE(box(window).text().startsWith(u"学生"_s));
            EXPECT_TRUE(box(window).text().contains(u"…"_s));
            EXPECT_TRUE(box(window).text().endsWith(u"继续？"_s));
            QTest::keyClick(&window, Qt::Key_Escape);
        });
    };
    for (const QString& part : {u"x"_s, u"长"_s, u"甲、"_s, u"行\n"_s, u"a b "_s}) {
        const QString text = u"学生 "_s + part.repeated(10'000) + u"\n\n继续？"_s;
        fits();
        dialogs.message(text, {}, Buttons::OkCancel, Icon::Warning);
        runtime::Choice choice = skipOrAll;
        choice.text = text;
        fits();
        dialogs.choose(choice);
        fits();
        dialogs.failure(text);
    }
}

TEST_F(ScreenDialogs, AFailureOutsideACommandOffersNoSilence)
{
    for (int i = 0; i < 2; ++i) {
        boxes.expect([](QDialog& window) {
            EXPECT_EQ(box(window).text(), u"坏 - Sub X/Y"_s);
            EXPECT_EQ(box(window).icon(), QMessageBox::Warning);
            EXPECT_EQ(box(window).checkBox(), nullptr);
            window.accept();
        });
        runtime::Trap(" - Sub X/Y").fail(u"坏"_s);
    }
}

TEST_F(ScreenDialogs, AQuietCommandTellsAtItsEndHowManyFailuresItPassedOver)
{
    {
        const widgets::CommandScope command(dialogs);
        passOver(false);
        dialogs.failure(u"一"_s);
        passOver(true);
        dialogs.failure(u"二"_s);
        for (int i = 0; i < 1000; ++i)
            dialogs.failure(u"三"_s);
        {
            const widgets::CommandScope inner(dialogs);
            dialogs.failure(u"四"_s);
        }
        EXPECT_EQ(boxes.count, 2);
        boxes.expect([](QDialog& window) {
            EXPECT_EQ(box(window).text(), u"另有 1,001 条消息没有显示。"_s);
            window.accept();
        });
    }
    EXPECT_EQ(boxes.count, 3);
    const widgets::CommandScope next(dialogs);
    passOver(false);
    dialogs.failure(u"五"_s);
    EXPECT_EQ(boxes.count, 4);
}

TEST_F(ScreenDialogs, AFailureThatRepeatsIsShownOnceAndCountedAtTheEndOfTheCommand)
{
    const runtime::Trap trap{" - Sub X/Y"};
    {
        const widgets::CommandScope command(dialogs);
        passOver(false);
        passOver(false);
        for (int i = 0; i < 1001; ++i)
            trap.fail(u"一"_s);
        trap.fail(u"二"_s);
        EXPECT_EQ(boxes.count, 2);
        boxes.expect([](QDialog& window) {
            EXPECT_EQ(box(window).text(), u"一 - Sub X/Y（同样的提示另有 1,000 条）"_s);
            EXPECT_EQ(box(window).icon(), QMessageBox::Warning);
            window.accept();
        });
    }
    EXPECT_EQ(boxes.count, 3);
    const widgets::CommandScope next(dialogs);
    passOver(false);
    trap.fail(u"一"_s);
    EXPECT_EQ(boxes.count, 4);
}

TEST_F(ScreenDialogs, TheKeyboardGoesBackToTheWindowThatABoxBelongsTo)
{
    QWidget screen;
    QWidget photo;
    screen.show();
    photo.show();
    screen.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    const auto takeKeyboard = [&](QDialog& window) {
        photo.activateWindow();
        window.accept();
    };
    boxes.expect(takeKeyboard);
    dialogs.message(u"一"_s, {}, Buttons::Ok, Icon::None);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    boxes.expect(takeKeyboard);
    dialogs.choose(skipOrAll);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    boxes.expect(takeKeyboard);
    dialogs.failure(u"二"_s);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
}

TEST_F(ScreenDialogs, WhatAQuietCommandPassesOverIsToldWithWhatItFolded)
{
    const runtime::Trap trap{" - Sub X/Y"};
    {
        const widgets::CommandScope command(dialogs);
        passOver(false);
        trap.fail(u"一"_s);
        trap.fail(u"一"_s);
        passOver(true);
        trap.fail(u"二"_s);
        for (int i = 0; i < 1000; ++i)
            trap.fail(u"一"_s);
        boxes.expect([](QDialog& window) {
            EXPECT_EQ(box(window).text(), u"一 - Sub X/Y（同样的提示另有 1 条）\n"
                                          "另有 1,000 条消息没有显示。"_s);
            window.accept();
        });
    }
    EXPECT_EQ(boxes.count, 3);
}

TEST_F(ScreenDialogs, AQuietCommandStillTellsThatNothingWasWritten)
{
    const widgets::CommandScope command(dialogs);
    const runtime::Trap trap{" - tag"};
    boxes.expect([](QDialog& window) {
        window.findChild<QCheckBox*>(u"CheckQuiet"_s)->setChecked(true);
        box(window).accept();
    });
    trap.fail(u"一"_s);
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(box(window).text(), u"磁盘已满 - tag"_s);
        box(window).accept();
    });
    trap([] { throw runtime::PhaseError(u"磁盘已满"_s); });
    EXPECT_EQ(boxes.count, 2);
}

TEST_F(ScreenDialogs, ACommandWithoutSilenceEndsWithoutACount)
{
    {
        const widgets::CommandScope command(dialogs);
        passOver(false);
        dialogs.failure(u"一"_s);
        passOver(true);
        dialogs.failure(u"二"_s);
    }
    EXPECT_EQ(boxes.count, 2);
}

TEST_F(ScreenDialogs, QuestionsAreAskedInAQuietCommandToo)
{
    const widgets::CommandScope command(dialogs);
    passOver(true);
    dialogs.failure(u"一"_s);
    press(QMessageBox::Yes);
    EXPECT_EQ(runtime::MsgBox(u"继续？"_s, {}, Buttons::YesNo), Answer::Yes);
}

TEST_F(ScreenDialogs, TheFileDialogGetsTheFilterInItsOwnForm)
{
    const std::vector<std::pair<QString, QString>> filters{
        {u"成绩库|*.CJK"_s, u"成绩库 (*.CJK *.cjk)"_s},
        {u"工作簿|*.xlsx;*.xls"_s, u"工作簿 (*.xlsx *.xls)"_s},
        {u"所有图片文件(*.*)|*.*|"_s, u"所有图片文件(*.*) (*)"_s},
    };
    for (const auto& [filter, shown] : filters) {
        boxes.expect([&](QDialog& window) {
            const auto& dialog = dynamic_cast<QFileDialog&>(window);
            EXPECT_EQ(dialog.nameFilters(), QStringList(shown));
            EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
            EXPECT_EQ(window.windowTitle(), u"打开文件"_s);
            window.reject();
        });
        EXPECT_EQ(runtime::ShowFileDialog(filter, FileMode::Open), QString());
    }
}

TEST_F(ScreenDialogs, ASavedFileGetsTheExtensionAndIsNotAskedAboutTwice)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"新库.CJK"_s);
    QFile existing(file);
    ASSERT_TRUE(existing.open(QFile::WriteOnly));
    existing.close();
    boxes.expect([&](QDialog& window) {
        auto& dialog = dynamic_cast<QFileDialog&>(window);
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
        dialog.setDirectory(folder.path());
        dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(u"新库"_s);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    EXPECT_EQ(dialogs.chooseFile(u"保存文件"_s, u"成绩库|*.CJK"_s, FileMode::Save), file);
    EXPECT_EQ(boxes.count, 1);
}

TEST_F(ScreenDialogs, ABoxBelongsToTheModalScreenUnlessAWindowBesideItIsInUse)
{
    QWidget main;
    // No QDialog, which would be taken for a box.
    QWidget screen(&main, Qt::Window);
    screen.setWindowModality(Qt::WindowModal);
    QWidget beside;
    for (QWidget* window : {&main, &screen, &beside})
        window->show();
    for (QWidget* window : {&screen, &beside}) {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        boxes.expect([&](QDialog& shown) {
            EXPECT_EQ(shown.parentWidget(), window);
            box(shown).accept();
        });
        runtime::MsgBox(u"好"_s);
    }
}

TEST_F(ScreenDialogs, AFolderIsChosenOrNone)
{
    const QTemporaryDir folder;
    boxes.expect([&](QDialog& window) {
        auto& dialog = dynamic_cast<QFileDialog&>(window);
        EXPECT_EQ(dialog.windowTitle(), u"选择文件夹"_s);
        EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
        EXPECT_EQ(dialog.directory().path(), folder.path());
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    dialogs.startIn(folder.path());
    EXPECT_EQ(dialogs.chooseFolder(u"选择文件夹"_s), folder.path());
    boxes.expect([](QDialog& window) { window.reject(); });
    EXPECT_EQ(dialogs.chooseFolder(u"选择文件夹"_s), std::nullopt);
}

TEST_F(ScreenDialogs, AColourIsItsRedFirst)
{
    boxes.expect([](QDialog& window) {
        auto& dialog = dynamic_cast<QColorDialog&>(window);
        EXPECT_EQ(dialog.currentColor(), QColor(0x33, 0x22, 0x11));
        dialog.setCurrentColor(QColor(1, 2, 3));
        window.accept();
    });
    EXPECT_EQ(dialogs.chooseColor(u"颜色"_s, 0x112233), 0x030201);
    boxes.expect([](QDialog& window) { window.reject(); });
    EXPECT_EQ(dialogs.chooseColor(u"颜色"_s, 0), std::nullopt);
}

} // namespace
