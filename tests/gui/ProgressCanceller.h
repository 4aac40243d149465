#pragma once

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace support {

using namespace Qt::StringLiterals;

/// Presses 取消 once in the window of running work, as soon as that is there.
class ProgressCanceller
{
public:
    ProgressCanceller()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { poll(); });
        m_timer.start(0);
    }

    /// The work's text when 取消 was pressed; empty if it never came to that.
    QString text;

private:
    void poll()
    {
        QWidget* window = QApplication::activeModalWidget();
        if (!window || window->objectName() != u"ProgressWindow"_s)
            return;
        m_timer.stop();
        text = window->findChild<QLabel*>(u"ProgressText"_s)->text();
        QTest::mouseClick(window->findChild<QPushButton*>(u"ProgressCancel"_s), Qt::LeftButton);
    }

    QTimer m_timer;
};

} // namespace support
