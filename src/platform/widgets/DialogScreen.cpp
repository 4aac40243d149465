#include "platform/widgets/DialogScreen.h"

#include <QKeyEvent>
#include <QPushButton>

namespace widgets {

void DialogScreen::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        event->accept();
        close();
        return;
    case Qt::Key_Enter:
    case Qt::Key_Return:
        // Screen keeps Enter from the default button.
        QDialog::keyPressEvent(event); // NOLINT(bugprone-parent-virtual-call)
        return;
    default:
        Screen::keyPressEvent(event);
    }
}

QPushButton* enterButton(const QString& objectName, const QString& caption, QWidget* parent)
{
    QPushButton* made = button(objectName, caption, parent);
    made->setAutoDefault(true);
    return made;
}

QPushButton* defaultButton(const QString& objectName, const QString& caption, QWidget* parent)
{
    QPushButton* made = enterButton(objectName, caption, parent);
    made->setDefault(true);
    return made;
}

} // namespace widgets
