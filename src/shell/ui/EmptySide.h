#pragma once

#include <QWidget>

#include "shell/NextStep.h"

class QPushButton;

namespace shell {

class Road;
class StartPage;

/// What stands where results will stand: without a library the start page, then the road with the
/// next step as a button, until the first exam is scored.
class EmptySide : public QWidget
{
    Q_OBJECT

public:
    EmptySide(library::ScoreLibrary& scoreLibrary, QWidget* parent);

    StartPage& page() { return *m_page; }

    /// Shows what the library needs next.
    void refresh();

Q_SIGNALS:
    /// The button of the next step was pressed.
    void stepRequested(shell::Step step);

private:
    void makeNote();

    library::ScoreLibrary& m_library;
    Step m_step = Step::NewLibrary;
    StartPage* m_page = nullptr;
    QWidget* m_note = nullptr;
    Road* m_road = nullptr;
    QPushButton* m_next = nullptr;
};

} // namespace shell
