#pragma once

#include <QObject>
#include <QTimer>

class QDockWidget;
class QMainWindow;

namespace shell {

/// Where the main window and its panel stand, kept for the next start a moment after each change.
class WindowLayout : public QObject
{
    Q_OBJECT

public:
    WindowLayout(QMainWindow& window, QDockWidget& panel);
    ~WindowLayout() override;

    void restore();
    void save() const;

    /// Hides the panel for a query, which is no choice for the next start.
    void stepAside();

protected:
    /// The window or the panel was moved or resized.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void noteChange();

    QMainWindow& m_window;
    QDockWidget& m_panel;
    QTimer m_change;
    bool m_steppedAside = false;
};

} // namespace shell
