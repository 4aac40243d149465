#include "import/ui/LabelProgress.h"

#include <QLabel>

namespace importing {

LabelProgress::LabelProgress(QWidget* screen, QLabel& text) : ScreenProgress(screen), m_text(text)
{
}

LabelProgress::~LabelProgress()
{
    m_text.clear();
}

void LabelProgress::report(const QString& text, int done, int total)
{
    if (m_text.text() != text) {
        m_text.setText(text);
        m_text.repaint();
    }
    ScreenProgress::report(text, done, total);
}

} // namespace importing
