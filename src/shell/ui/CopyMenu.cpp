#include "shell/ui/CopyMenu.h"

#include "library/LibraryCopies.h"
#include "library/ui/FormNew.h"
#include "platform/runtime/Dialogs.h"

namespace shell {

using namespace Qt::StringLiterals;
using widgets::CommandScope;

CopyMenu::CopyMenu(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                   MenuScreens& screens)
    : m_library(scoreLibrary), m_dialogs(dialogs), m_screens(screens)
{
}

void CopyMenu::restore()
{
    const CommandScope command(m_dialogs);
    const bool isOpen = m_library.Conn.isOpen();
    QString path = isOpen ? m_library.Conn.path() : m_library.LibPath;
    if (path.isEmpty() || (!isOpen && library::copiesOf(path).empty()))
        path = runtime::ShowFileDialog(library::LibFilter, runtime::FileMode::Open);
    if (!path.isEmpty())
        restoreBeside(path);
}

void CopyMenu::restoreBeside(const QString& libraryPath)
{
    if (m_screens.mayLeaveLibrary() && m_screens.restoreCopy(libraryPath))
        Q_EMIT restored();
}

void CopyMenu::undoImport()
{
    const CommandScope command(m_dialogs);
    if (m_screens.mayLeaveLibrary() && m_screens.undoLastImport())
        Q_EMIT restored();
}

void CopyMenu::offer(const QString& libraryPath)
{
    const std::vector<library::LibraryCopy> copies = library::copiesOf(libraryPath);
    if (copies.empty())
        return;
    const QString question =
        u"%1\n\n这个成绩库旁边有 %2 份备份，最近的一份是 %3 的。要用“恢复备份”恢复其中一份吗？"_s
            .arg(libraryPath, QString::number(copies.size()),
                 library::timeText(copies.front().time));
    constexpr int goOn = 0;
    if (runtime::choose({.text = question,
                         .buttons = {u"恢复备份…"_s, u"不恢复"_s},
                         .safe = 1,
                         .title = u"恢复备份"_s})
        == goOn)
        restoreBeside(libraryPath);
}

} // namespace shell
