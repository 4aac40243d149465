#pragma once

#include <QDialog>

class QAbstractButton;
class QCloseEvent;
class QLabel;
class QPushButton;

namespace widgets {

/// A window of the program. It carries its design name, closes only by its own buttons and by its
/// close box: Esc closes nothing, and Enter presses no button.
class Screen : public QDialog
{
    Q_OBJECT

public:
    Screen(const QString& name, const QString& caption, QWidget* parent);

    /// Asked before the screen closes: false if it has to stay. A screen with something to save
    /// asks the user.
    virtual bool mayLeave() { return true; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    /// No screen begins larger than the display.
    void showEvent(QShowEvent* event) override;
};

/// Gives a widget its design name and what a screen reader says.
template <class Widget>
Widget* named(Widget* widget, const QString& objectName, const QString& accessibleName)
{
    widget->setObjectName(objectName);
    widget->setAccessibleName(accessibleName);
    return widget;
}

/// Gives a label its design name. What a screen reader says is its text, which changes and is shown
/// as it stands, whatever looks like markup in it.
template <class Label> Label* namedText(Label* label, const QString& objectName)
{
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// "导入(&I)" as it is read: "导入".
QString withoutAccessKey(const QString& caption);

/// A text as a caption that shows it as it stands: no letter of it becomes an access key.
QString literalCaption(const QString& text);

/// A push button with its design name; `caption` can carry an access key as in "导入(&I)".
QPushButton* button(const QString& objectName, const QString& caption, QWidget* parent);

/// A label with its design name that leads to `buddy` by its access key.
QLabel* label(const QString& objectName, const QString& caption, QWidget* buddy, QWidget* parent);

} // namespace widgets
