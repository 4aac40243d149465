#include "platform/widgets/DialogScreen.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

/// A screen that can be told to stay.
class Stubborn : public widgets::DialogScreen
{
public:
    Stubborn() : DialogScreen(u"Stubborn"_s, u"窗口"_s, nullptr)
    {
        auto* layout = new QVBoxLayout(this);
        for (QWidget* widget : {static_cast<QWidget*>(text), static_cast<QWidget*>(other),
                                static_cast<QWidget*>(save)})
            layout->addWidget(widget);
        show();
        activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
    }
    bool mayLeave() override { return mayGo; }

    bool mayGo = true;
    QLineEdit* text = new QLineEdit(this);
    QPushButton* other = widgets::enterButton(u"other"_s, u"另一个(&A)"_s, this);
    QPushButton* save = widgets::defaultButton(u"save"_s, u"保存(&S)"_s, this);
};

TEST(DialogScreen, EscClosesItAsItsCloseBoxDoes)
{
    Stubborn screen;
    screen.mayGo = false;
    QTest::keyClick(screen.text, Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    screen.mayGo = true;
    QTest::keyClick(screen.text, Qt::Key_Escape);
    EXPECT_FALSE(screen.isVisible());
}

TEST(DialogScreen, EnterPressesTheDefaultButtonFromAText)
{
    Stubborn screen;
    const QSignalSpy saved(screen.save, &QPushButton::clicked);
    const QSignalSpy others(screen.other, &QPushButton::clicked);
    screen.text->setFocus();
    QTest::keyClick(screen.text, Qt::Key_Return);
    QTest::keyClick(screen.text, Qt::Key_Enter);
    EXPECT_EQ(saved.count(), 2);
    EXPECT_EQ(others.count(), 0);
    EXPECT_TRUE(screen.isVisible());
}

TEST(DialogScreen, EnterPressesTheButtonThatHasTheKeyboard)
{
    Stubborn screen;
    const QSignalSpy saved(screen.save, &QPushButton::clicked);
    const QSignalSpy others(screen.other, &QPushButton::clicked);
    screen.other->setFocus();
    QTest::keyClick(screen.other, Qt::Key_Return);
    EXPECT_EQ(others.count(), 1);
    EXPECT_EQ(saved.count(), 0);
}

} // namespace
