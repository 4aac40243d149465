#pragma once

#include <QApplication>
#include <QInputMethodEvent>
#include <QTest>

namespace support {

/// Types a text over what a field holds, as an input method for Chinese does.
inline void typeOver(QWidget* field, const QString& text)
{
    field->setFocus();
    QWidget* typed = field->focusProxy() ? field->focusProxy() : field;
    QTest::keyClick(typed, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(typed, Qt::Key_Delete);
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(typed, &event);
}

} // namespace support
