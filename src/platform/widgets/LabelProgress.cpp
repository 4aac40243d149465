#include "platform/widgets/LabelProgress.h"

#include <QLabel>

namespace widgets {

LabelProgress::LabelProgress(QWidget* screen, QLabel& text, QWidget* panel)
    : ScreenProgress(screen), m_text(text), m_panel(panel)
{
}

LabelProgress::~LabelProgress()
{
    show({});
}

void LabelProgress::report(const QString& text, int done, int total)
{
    show(text);
    ScreenProgress::report(text, done, total);
}

void LabelProgress::finish()
{
    show({});
    ScreenProgress::finish();
}

void LabelProgress::show(const QString& text)
{
    if (m_text.text() == text)
        return;
    m_text.setText(text);
    if (m_panel)
        m_panel->setVisible(!text.isEmpty());
    (m_panel ? m_panel : &m_text)->repaint();
}

} // namespace widgets
