#include "platform/widgets/Screen.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

TEST(Screen, CarriesItsNameAndCaption)
{
    const widgets::Screen screen(u"FormNew"_s, u"新建成绩库"_s, nullptr);
    EXPECT_EQ(screen.objectName(), u"FormNew"_s);
    EXPECT_EQ(screen.windowTitle(), u"新建成绩库"_s);
}

TEST(Screen, EscClosesNothingAndEnterPressesNoButton)
{
    widgets::Screen screen(u"FormNew"_s, u"新建"_s, nullptr);
    auto* layout = new QVBoxLayout(&screen);
    auto* text = new QLineEdit;
    auto* made = widgets::button(u"Command1"_s, u"确定(&O)"_s, &screen);
    layout->addWidget(text);
    layout->addWidget(made);
    const QSignalSpy clicked(made, &QPushButton::clicked);
    screen.show();
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(text, key);
        QTest::keyClick(&screen, key);
    }
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(clicked.count(), 0);
    QTest::mouseClick(made, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
    screen.close();
    EXPECT_FALSE(screen.isVisible());
}

TEST(Screen, AWidgetIsReadWithoutItsAccessKey)
{
    QWidget window;
    auto* box = new QLineEdit(&window);
    const auto* made = widgets::button(u"Command1"_s, u"导入(&I)"_s, &window);
    const auto* label = widgets::label(u"Label1"_s, u"班级(&B)"_s, box, &window);
    EXPECT_EQ(made->objectName(), u"Command1"_s);
    EXPECT_EQ(made->accessibleName(), u"导入"_s);
    EXPECT_EQ(made->text(), u"导入(&I)"_s);
    EXPECT_EQ(label->buddy(), box);
    EXPECT_EQ(box->accessibleName(), u"班级"_s);
}

TEST(Screen, ALabelLeavesTheNameThatItsBuddyHas)
{
    QWidget window;
    auto* box = widgets::named(new QLineEdit(&window), u"TextBJ"_s, u"班级号"_s);
    widgets::label(u"Label1"_s, u"班级"_s, box, &window);
    EXPECT_EQ(box->accessibleName(), u"班级号"_s);
}

TEST(Screen, BeginsNoLargerThanTheDisplayAndCanBeMadeLarger)
{
    widgets::Screen screen(u"FormNew"_s, u"新建"_s, nullptr);
    const QSize available = screen.screen()->availableSize();
    screen.resize(available + QSize(100, 200));
    screen.show();
    EXPECT_EQ(screen.size(), available);
    screen.resize(300, 200);
    screen.hide();
    screen.show();
    EXPECT_EQ(screen.size(), QSize(300, 200));
}

TEST(Screen, ACaptionIsReadWithoutItsAccessKey)
{
    EXPECT_EQ(widgets::withoutAccessKey(u"另存为(&S)…"_s), u"另存为…"_s);
    EXPECT_EQ(widgets::withoutAccessKey(u"&OK"_s), u"OK"_s);
    EXPECT_EQ(widgets::withoutAccessKey(u"班级(人)"_s), u"班级(人)"_s);
}

TEST(Screen, ATextWithAnAmpersandIsShownAsItStands)
{
    EXPECT_EQ(widgets::literalCaption(u"R&B班"_s), u"R&&B班"_s);
}

} // namespace
