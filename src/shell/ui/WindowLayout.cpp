#include "shell/ui/WindowLayout.h"

#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <QScreen>
#include <QSettings>

namespace shell {

using namespace Qt::StringLiterals;

namespace {

constexpr int saveAfterMs = 200;

} // namespace

WindowLayout::WindowLayout(QMainWindow& window, QDockWidget& panel)
    : m_window(window), m_panel(panel)
{
    connect(&m_panel, &QDockWidget::visibilityChanged, this, [this](bool visible) {
        m_steppedAside = m_steppedAside && !visible;
        noteChange();
    });
    connect(&m_panel, &QDockWidget::topLevelChanged, this, &WindowLayout::noteChange);
    connect(&m_panel, &QDockWidget::dockLocationChanged, this, &WindowLayout::noteChange);
    m_panel.installEventFilter(this);
    m_window.installEventFilter(this);
    m_change.setSingleShot(true);
    m_change.setInterval(saveAfterMs);
    connect(&m_change, &QTimer::timeout, this, &WindowLayout::save);
}

WindowLayout::~WindowLayout()
{
    // 退出 ends without closing the window. The panel is hidden once more while the window goes;
    // nobody hears of it any more, as that is no change of the user's.
    if (m_change.isActive())
        save();
}

/// Dragging an edge changes the layout many times a second; it is written once.
void WindowLayout::noteChange()
{
    m_change.start();
}

void WindowLayout::stepAside()
{
    m_steppedAside = true;
    m_panel.hide();
}

void WindowLayout::save() const
{
    if (!m_window.isVisible())
        return;
    QSettings settings;
    settings.setValue(u"geometry"_s, m_window.saveGeometry());
    if (!m_steppedAside)
        settings.setValue(u"panels"_s, m_window.saveState());
}

void WindowLayout::restore()
{
    const QSettings settings;
    const QFontMetrics letters = m_window.fontMetrics();
    if (!m_window.restoreGeometry(settings.value(u"geometry"_s).toByteArray()))
        m_window.resize(QSize(letters.averageCharWidth() * 180, letters.lineSpacing() * 50)
                            .boundedTo(m_window.screen()->availableSize()));
    if (!m_window.restoreState(settings.value(u"panels"_s).toByteArray()))
        m_window.resizeDocks({&m_panel}, {letters.averageCharWidth() * 70}, Qt::Horizontal);
}

bool WindowLayout::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        noteChange();
    return QObject::eventFilter(watched, event);
}

} // namespace shell
