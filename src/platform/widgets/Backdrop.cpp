#include "platform/widgets/Backdrop.h"

#include <QPainter>

#include "platform/runtime/Error.h"

namespace widgets {

using namespace Qt::StringLiterals;

namespace {

/// How much of the palette's background lies over the picture, of 255.
int veil(const QPalette& palette)
{
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    return dark ? 225 : 150;
}

} // namespace

void Backdrop::LoadPicture(const QString& path)
{
    QPixmap picture;
    if (!picture.load(path))
        throw runtime::Error(u"找不到图片文件“%1”，或者它已损坏。"_s.arg(path));
    m_picture = picture;
    update();
}

void Backdrop::paintEvent(QPaintEvent*)
{
    if (m_picture.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QSize covering = m_picture.size().scaled(size(), Qt::KeepAspectRatioByExpanding);
    painter.drawPixmap(
        QRect(QPoint((width() - covering.width()) / 2, height() - covering.height()), covering),
        m_picture);
    QColor background = palette().color(QPalette::Window);
    background.setAlpha(veil(palette()));
    painter.fillRect(rect(), background);
}

} // namespace widgets
