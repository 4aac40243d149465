#pragma once

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace support {

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
        if (!window || window->objectName() != QStringLiteral("ProgressWindow"))
            return;
        m_timer.stop();
        text = window->findChild<QLabel*>(QStringLiteral("ProgressText"))->text();
        QTest::mouseClick(window->findChild<QPushButton*>(QStringLiteral("ProgressCancel")),
                          Qt::LeftButton);
    }

    QTimer m_timer;
};

} // namespace support
