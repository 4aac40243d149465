#pragma once

#include <QScrollArea>

#include "shell/FileLook.h"

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace shell {

class LibraryList;

/// What the main window shows while no library is open: how to come to one, and what follows.
class StartPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit StartPage(QWidget* parent, const FileLook::Look& look = FileLook::ofSystem);

    void showLibraries(const QStringList& paths);

    /// Puts the keyboard where the user begins: on the libraries of before, else on "新建成绩库".
    void begin();

Q_SIGNALS:
    void newRequested();
    void openRequested();
    void demoRequested();
    void libraryRequested(const QString& path);
    void removalRequested(const QString& path);

private:
    void build(const FileLook::Look& look);
    void layOut(QVBoxLayout* layout);
    void connectAll();
    QPushButton* makeButton(const QString& name, const QString& caption, const QString& tip);

    QPushButton* m_new = nullptr;
    QPushButton* m_open = nullptr;
    QPushButton* m_demo = nullptr;
    QPushButton* m_remove = nullptr;
    QLabel* m_caption = nullptr;
    LibraryList* m_libraries = nullptr;
};

} // namespace shell
