#include "individual/paint/PaintingApplication.h"

#include <QFont>
#include <QFontMetrics>

#include "platform/runtime/ChineseFonts.h"

namespace individual {

namespace {

/// Ahead of the application, which looks for its platform at once.
char* withoutDisplay(char* program)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return program;
}

} // namespace

PaintingApplication::PaintingApplication(char* program)
    : m_arguments{withoutDisplay(program), nullptr}, m_application(m_count, m_arguments)
{
    QFont font;
    font.setFamilies(runtime::chineseFontFamilies());
    QGuiApplication::setFont(font);
}

bool PaintingApplication::hasChineseGlyphs()
{
    return QFontMetrics(QGuiApplication::font()).inFont(u'班');
}

} // namespace individual
