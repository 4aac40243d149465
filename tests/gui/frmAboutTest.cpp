#include "shell/ui/frmAbout.h"

#include <QApplication>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

class AboutBox : public testing::Test
{
protected:
    AboutBox() { QApplication::setApplicationVersion(u"7.8.9"_s); }
    ~AboutBox() override
    {
        QApplication::setApplicationVersion(m_version);
        QApplication::setWindowIcon(m_icon);
    }

    static QString text(const shell::frmAbout& form, const QString& name)
    {
        return form.findChild<QLabel*>(name)->text();
    }

private:
    const QString m_version = QApplication::applicationVersion();
    const QIcon m_icon = QApplication::windowIcon();
};

TEST_F(AboutBox, TellsTitleVersionAndWhatTheProgramIsFor)
{
    const shell::frmAbout form(nullptr);
    EXPECT_EQ(form.windowTitle(), u"关于软件"_s);
    EXPECT_EQ(text(form, u"LabelTitle"_s), u"云杉学业册"_s);
    EXPECT_EQ(text(form, u"LabelVersion"_s), u"版本 7.8.9"_s);
    const QString description = text(form, u"LabelDescription"_s);
    EXPECT_TRUE(description.startsWith(u"管理一所中学的学生和历次考试成绩"_s));
    EXPECT_FALSE(description.contains(u'\n'));
}

TEST_F(AboutBox, ShowsTheProgramsIconWhereThereIsOne)
{
    QApplication::setWindowIcon({});
    const shell::frmAbout plain(nullptr);
    EXPECT_TRUE(plain.findChild<QLabel*>(u"Picture1"_s)->pixmap().isNull());
    QPixmap green(200, 200);
    green.fill(Qt::green);
    QApplication::setWindowIcon(QIcon(green));
    const shell::frmAbout form(nullptr);
    EXPECT_FALSE(form.findChild<QLabel*>(u"Picture1"_s)->pixmap().isNull());
}

TEST_F(AboutBox, TheButtonClosesItByClickAndBySpaceAndEscDoesNot)
{
    shell::frmAbout form(nullptr);
    auto* close = form.findChild<QPushButton*>(u"Command1"_s);
    form.show();
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_TRUE(form.isVisible());
    QTest::mouseClick(close, Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
    form.show();
    QTest::keyClick(close, Qt::Key_Space);
    EXPECT_FALSE(form.isVisible());
}

} // namespace
