#include "platform/widgets/Screen.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShowEvent>

#include "platform/widgets/Captions.h"


namespace widgets {

Screen::Screen(const QString& name, const QString& caption, QWidget* parent) : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(caption);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setSizeGripEnabled(true);
}

void Screen::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Enter:
    case Qt::Key_Return:
        event->accept();
        return;
    default:
        QDialog::keyPressEvent(event);
    }
}

void Screen::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        resize(size().boundedTo(screen()->availableSize()));
    QDialog::showEvent(event);
}

QPushButton* button(const QString& objectName, const QString& caption, QWidget* parent)
{
    auto* made = new QPushButton(caption, parent);
    // A button that is not "auto default" leaves Enter alone.
    made->setAutoDefault(false);
    return named(made, objectName, withoutAccessKey(caption));
}

QLabel* label(const QString& objectName, const QString& caption, QWidget* buddy, QWidget* parent)
{
    auto* made = new QLabel(caption, parent);
    made->setBuddy(buddy);
    if (buddy && buddy->accessibleName().isEmpty())
        buddy->setAccessibleName(withoutAccessKey(caption));
    return named(made, objectName, withoutAccessKey(caption));
}

} // namespace widgets
