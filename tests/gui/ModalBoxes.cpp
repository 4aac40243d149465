#include "gui/ModalBoxes.h"

#include <QApplication>
#include <QPointer>

#include <gtest/gtest.h>

namespace support {

using namespace Qt::StringLiterals;

ModalBoxes::ModalBoxes()
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { poll(); });
    m_timer.start(5);
}

ModalBoxes::~ModalBoxes()
{
    if (!m_steps.empty())
        ADD_FAILURE() << m_steps.size() << " modal windows never came";
}

void ModalBoxes::expect(std::function<void(QDialog&)> step)
{
    m_steps.push_back(std::move(step));
}

/// A step can open the next modal window before it returns, and a timer does not fire within
/// itself: so every step has a timer of its own.
void ModalBoxes::poll()
{
    const QPointer<QDialog> window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!window || m_busy || window->objectName() == u"ProgressWindow"_s)
        return;
    m_busy = true;
    QTimer::singleShot(0, &m_timer, [this, window] {
        m_busy = false;
        if (window && window->isVisible())
            answer(*window);
    });
}

void ModalBoxes::answer(QDialog& window)
{
    ++count;
    if (m_steps.empty()) {
        ADD_FAILURE() << "unexpected window: " << window.windowTitle().toStdString();
        window.reject();
        return;
    }
    const std::function<void(QDialog&)> step = m_steps.front();
    m_steps.pop_front();
    step(window);
}

} // namespace support
