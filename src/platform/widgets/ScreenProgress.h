#pragma once

#include <chrono>
#include <memory>

#include <QElapsedTimer>

#include "platform/runtime/Progress.h"

class QDialog;
class QLabel;
class QProgressBar;
class QPushButton;
class QWidget;

namespace widgets {

/// runtime::Progress in a small window with counts, a bar and 取消. It blocks all other input; the
/// work stays on the one thread, and the windows are painted between its steps. The window appears
/// only when the work takes longer than a moment.
class ScreenProgress : public runtime::Progress
{
public:
    explicit ScreenProgress(QWidget* parent,
                            std::chrono::milliseconds appearAfter = std::chrono::milliseconds(300));
    ~ScreenProgress() override;

    void report(const QString& text, int done, int total) override;
    void finish() override { stepAside(); }
    bool cancelled() const override { return m_cancelled; }

    /// Takes the window away until the next report, so that it does not stand beside a screen that
    /// asks something.
    void stepAside();

private:
    void paint();
    void cancel();

    std::unique_ptr<QDialog> m_window;
    QLabel* m_text;
    QLabel* m_counts;
    QProgressBar* m_bar;
    QPushButton* m_cancel;
    std::chrono::milliseconds m_appearAfter;
    QElapsedTimer m_started;
    QElapsedTimer m_painted;
    bool m_cancelled = false;
};

} // namespace widgets
