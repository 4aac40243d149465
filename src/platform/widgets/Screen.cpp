#include "platform/widgets/Screen.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShowEvent>

namespace widgets {

using namespace Qt::StringLiterals;

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

void Screen::closeEvent(QCloseEvent* event)
{
    if (mayLeave())
        QDialog::closeEvent(event);
    else
        event->ignore();
}

void Screen::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        resize(size().boundedTo(screen()->availableSize()));
    QDialog::showEvent(event);
}

QString withoutAccessKey(const QString& caption)
{
    constexpr int keyLength = 4;
    QString text = caption;
    const qsizetype key = text.indexOf(u"(&"_s);
    if (key >= 0)
        text.remove(key, keyLength);
    return text.remove(u'&');
}

QString literalCaption(const QString& text)
{
    return QString(text).replace(u'&', u"&&"_s);
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
