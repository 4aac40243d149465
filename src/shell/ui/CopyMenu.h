#pragma once

#include <QObject>

#include "library/ScoreLibrary.h"
#include "platform/widgets/ScreenDialogs.h"
#include "shell/ui/MenuScreens.h"

namespace shell {

/// What the main window does with the copies of a library.
class CopyMenu : public QObject
{
    Q_OBJECT

public:
    CopyMenu(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
             MenuScreens& screens);

    /// "恢复备份" of the open library; without one of that which was last asked for, or one that
    /// the user names.
    void restore();
    /// "撤消上次导入".
    void undoImport();
    /// Asks whether to go back to a copy of a library that does not open, if there is one.
    void offer(const QString& libraryPath);

Q_SIGNALS:
    /// A copy took the place of a library, and that is open.
    void restored();

private:
    void restoreBeside(const QString& libraryPath);

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    MenuScreens& m_screens;
};

} // namespace shell
