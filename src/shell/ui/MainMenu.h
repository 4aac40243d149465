#pragma once

#include <QHash>
#include <QString>

#include "workbench/ui/Selection.h"

class QAction;
class QMenu;
class QMenuBar;
class QObject;

namespace shell {

/// The menu tree of the main window: every item under its design name, those whose screens do not
/// exist yet switched off with a tip that says so.
class MainMenu
{
public:
    explicit MainMenu(QMenuBar* bar);

    QAction* item(const QString& name) const { return m_items.value(name); }
    QMenu* menu(const QString& name) const { return m_menus.value(name); }

    /// Switches what needs a library.
    void setLibraryCommands(workbench::Available available);

private:
    QMenu* addMenu(QMenuBar* bar, const QString& name, const QString& caption);
    void addItem(QMenu* menu, const QString& name, const QString& caption);

    QHash<QString, QAction*> m_items;
    QHash<QString, QMenu*> m_menus;
};

/// Entries of the recent list.
inline constexpr int RecentCount = 6;

} // namespace shell
