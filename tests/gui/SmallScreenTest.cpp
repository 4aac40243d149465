#include <QApplication>
#include <QScreen>

#include "gui/Gallery.h"

namespace {

/// The windows with larger letters than otherwise.
class SmallScreen : public support::Gallery
{
protected:
    ~SmallScreen() override { QApplication::setFont(m_before); }

    static void setLetters(int points)
    {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }

private:
    const QFont m_before = QApplication::font();
};

/// The screen of the tests has as many letters across as one of 1366 × 768 at 200 % then.
TEST_F(SmallScreen, EveryWindowIsNarrowEnough)
{
    setLetters(12);
    for (const QString& name : names()) {
        const QWidget& window = open(name);
        EXPECT_LE(window.width(), window.screen()->availableSize().width()) << name.toStdString();
    }
}

/// The screen of the tests has as few lines as one of 1366 × 768 at 200 % then.
TEST_F(SmallScreen, EveryWindowIsLowEnough)
{
    setLetters(20);
    for (const QString& name : names()) {
        const QWidget& window = open(name);
        EXPECT_LE(window.height(), window.screen()->availableSize().height()) << name.toStdString();
    }
}

} // namespace
