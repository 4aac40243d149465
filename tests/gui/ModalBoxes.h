#pragma once

#include <deque>
#include <functional>

#include <QDialog>
#include <QTimer>

namespace support {

/// Answers modal windows as they come up, one planned step each, in order. A window that nobody
/// planned fails the test and is closed; a planned one that never came fails it too. The window of
/// running work, which comes and goes by itself, is passed over.
class ModalBoxes
{
public:
    ModalBoxes();
    ~ModalBoxes();

    /// What is done with the next modal window; it has to close it.
    void expect(std::function<void(QDialog&)> step);

    /// How many windows came up.
    int count = 0;

private:
    void poll();
    void answer(QDialog& window);

    std::deque<std::function<void(QDialog&)>> m_steps;
    QTimer m_timer;
    bool m_busy = false;
};

} // namespace support
