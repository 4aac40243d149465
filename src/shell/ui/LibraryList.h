#pragma once

#include <QListWidget>

#include "shell/FileLook.h"

namespace shell {

/// The libraries that were opened before: name, folder and time of the last change. One whose file
/// is gone is greyed. Enter and a double click open, Delete takes out of the list.
class LibraryList : public QListWidget
{
    Q_OBJECT

public:
    explicit LibraryList(QWidget* parent, FileLook::Look look = FileLook::ofSystem);

    void showLibraries(const QStringList& paths);
    /// The path of the chosen entry, or "".
    QString chosen() const;

Q_SIGNALS:
    void openRequested(const QString& path);
    void removalRequested(const QString& path);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void showState(const QString& path, const FileState& state);
    void greyMissing();

    FileLook m_look;
};

} // namespace shell
