#pragma once

#include <vector>

#include "library/CopyDifferences.h"
#include "library/LibraryCopies.h"
#include "library/ScoreLibrary.h"
#include "platform/grid/FlexGrid.h"
#include "platform/widgets/DialogScreen.h"
#include "platform/widgets/ScreenDialogs.h"

class QCheckBox;
class QLabel;
class QLayout;
class QPushButton;

namespace grid {
class FlexGridView;
}

namespace library {

/// "恢复备份": the copies of a library with what they were made ahead of, what the chosen one has
/// otherwise than the library now, and the way back to it.
class RestoreScreen : public widgets::DialogScreen
{
    Q_OBJECT

public:
    /// The library need not be open, nor sound, nor there.
    RestoreScreen(ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs, QString libraryPath,
                  QWidget* parent);

Q_SIGNALS:
    /// A copy took the library's place, and it is open.
    void restored();

private:
    void makeWidgets();
    /// The button, which does this as a command.
    QPushButton* addButton(QPushButton* made, const QString& tip, void (RestoreScreen::*press)());
    QLayout* makeButtons();
    void listCopies();
    void showDifferences();
    void forgetDifferences();
    void showChosen();
    void select(const QString& file);
    /// Whether the row is one that 其他文件 added.
    bool isOtherFile(int row) const;
    /// Null, after a message, if none is chosen.
    const LibraryCopy* chosen();

    void compare();
    void takeOtherFile();
    /// Takes a file that the user named off the list, or removes a copy.
    void removeChosen();
    void removeFile(const LibraryCopy& copy);
    void restore();

    ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    const QString m_path;
    /// A file that the user named stands first.
    std::vector<LibraryCopy> m_copies;
    std::vector<LibraryCopy> m_otherFiles;
    std::vector<DifferenceLine> m_lines;
    grid::FlexGrid m_copiesGrid;
    grid::FlexGrid m_differencesGrid;
    grid::FlexGridView* gridCopies = nullptr;
    grid::FlexGridView* gridDifferences = nullptr;
    QCheckBox* checkNames = nullptr;
    QPushButton* buttonRemove = nullptr;
    QLabel* labelDifferences = nullptr;
};

} // namespace library
