#include "platform/grid/ui/EditKeys.h"

#include <QKeyEvent>

namespace grid {

namespace {

constexpr auto plain = Qt::ShiftModifier | Qt::KeypadModifier;

bool isPlain(const QKeyEvent& key)
{
    return !(key.modifiers() & ~plain);
}

} // namespace

EditKey editKey(const QKeyEvent& key)
{
    if (key.key() == Qt::Key_Down && key.modifiers() & Qt::AltModifier)
        return EditKey::OpenList;
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_F2)
        return EditKey::Open;
    const bool types = isPlain(key) && !key.text().isEmpty() && key.text()[0].isPrint();
    return types ? EditKey::Type : EditKey::None;
}

int tabColumns(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return 0;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Tab ? 1 : key == Qt::Key_Backtab ? -1 : 0;
}

bool isSpace(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Space && isPlain(key);
}

} // namespace grid
