#include "platform/widgets/PasswordBox.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/ModalBoxes.h"
#include "platform/widgets/ScreenDialogs.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

class PasswordBox : public testing::Test
{
protected:
    static QLineEdit* field(const QDialog& box) { return box.findChild<QLineEdit*>(); }
    static void press(const QDialog& box, const QString& button)
    {
        QTest::mouseClick(box.findChild<QPushButton*>(button), Qt::LeftButton);
    }

    support::ModalBoxes boxes;
    widgets::ScreenDialogs dialogs;
};

TEST_F(PasswordBox, HidesWhatIsTypedAndIsConfirmedByEnter)
{
    boxes.expect([](QDialog& box) {
        EXPECT_EQ(box.objectName(), u"PasswordBox"_s);
        EXPECT_EQ(box.windowTitle(), u"云杉学业册"_s);
        EXPECT_EQ(box.findChild<QLabel*>()->text(), u"请输入密码："_s);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
        EXPECT_EQ(box.focusWidget(), field(box));
        QTest::keyClicks(box.focusWidget(), u"12 a"_s);
        EXPECT_EQ(field(box)->displayText().size(), 4);
        EXPECT_FALSE(field(box)->displayText().contains(u'1'));
        QTest::keyClick(box.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(runtime::askPassword(u"请输入密码："_s), u"12 a"_s);
}

TEST_F(PasswordBox, ShowsWhatIsTypedIfTheUserWantsToSeeIt)
{
    boxes.expect([](QDialog& box) {
        // As an input method puts it in.
        field(box)->insert(u"密1"_s);
        auto* shown = box.findChild<QCheckBox*>();
        QTest::mouseClick(shown, Qt::LeftButton, {}, QPoint(8, shown->height() / 2));
        EXPECT_EQ(field(box)->displayText(), u"密1"_s);
        QTest::mouseClick(shown, Qt::LeftButton, {}, QPoint(8, shown->height() / 2));
        EXPECT_NE(field(box)->displayText(), u"密1"_s);
        press(box, u"PasswordOk"_s);
    });
    EXPECT_EQ(runtime::askPassword(u"请输入密码："_s), u"密1"_s);
}

TEST_F(PasswordBox, TellsNothingTypedFromCancelled)
{
    boxes.expect([](QDialog& box) { press(box, u"PasswordOk"_s); });
    EXPECT_EQ(runtime::askPassword(u"请输入密码："_s), QString());
    const std::function<void(QDialog&)> ways[] = {
        [](QDialog& box) { press(box, u"PasswordCancel"_s); },
        [](QDialog& box) { QTest::keyClick(field(box), Qt::Key_Escape); },
        [](QDialog& box) { box.close(); }};
    for (const auto& way : ways) {
        boxes.expect([&way](QDialog& box) {
            QTest::keyClicks(field(box), u"1234"_s);
            way(box);
        });
        EXPECT_EQ(runtime::askPassword(u"请输入密码："_s), std::nullopt);
    }
}

} // namespace
