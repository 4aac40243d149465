#pragma once

#include <QComboBox>
#include <QKeyEvent>
#include <QWheelEvent>

namespace importing {

/// A box whose entries are picked from its open list alone: each choice changes others, so that no
/// key and no wheel may pass through entries on its way.
class ChoiceBox : public QComboBox
{
public:
    using QComboBox::QComboBox;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        constexpr Qt::KeyboardModifiers commands = Qt::AltModifier | Qt::ControlModifier;
        if (event->key() == Qt::Key_Escape)
            event->ignore();
        else if (event->modifiers() & commands)
            QComboBox::keyPressEvent(event);
        else
            showPopup();
    }
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

} // namespace importing
