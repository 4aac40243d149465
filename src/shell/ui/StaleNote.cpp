#include "shell/ui/StaleNote.h"

#include "platform/widgets/Screen.h"

namespace shell {

using namespace Qt::StringLiterals;

StaleNote::StaleNote(QWidget* parent) : QLabel(parent)
{
    widgets::namedText(this, u"LabelStale"_s);
    setWordWrap(true);
    // The panel behind it has a picture.
    setAutoFillBackground(true);
    setFrameShape(QFrame::StyledPanel);
    hide();
}

void StaleNote::tell(const QString& text)
{
    setText(text);
    show();
}

} // namespace shell
