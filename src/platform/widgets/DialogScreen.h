#pragma once

#include "platform/widgets/Screen.h"

namespace widgets {

/// A screen that Esc closes as its close box does, and on which Enter presses the default button,
/// or the button that has the keyboard.
class DialogScreen : public Screen
{
    Q_OBJECT

public:
    using Screen::Screen;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A push button as `button` makes it, that Enter presses when the keyboard is on it.
QPushButton* enterButton(const QString& objectName, const QString& caption, QWidget* parent);

/// The same for the one that Enter presses from elsewhere too.
QPushButton* defaultButton(const QString& objectName, const QString& caption, QWidget* parent);

} // namespace widgets
