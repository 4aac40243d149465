#include "library/ui/FormZP.h"

#include <QLabel>
#include <QMoveEvent>
#include <QScopedValueRollback>
#include <QScreen>

#include "library/paint/PhotoPicture.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;

FormZP::FormZP(const QString& noPicture, QWidget* owner)
    : Screen(u"FormZP"_s, u"照片"_s, owner), m_noPicture(noPicture)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    Image1 = widgets::named(new QLabel(this), u"Image1"_s, u"照片"_s);
    Image1->setScaledContents(true);
    Form_Load();
}

void FormZP::Form_Load()
{
    const int height = fontMetrics().lineSpacing() * 14;
    m_room = QSize(height * 3 / 4, height);
    resize(m_room);
    moveToCorner();
}

void FormZP::LoadPic(const QString& path)
{
    const runtime::Trap trap{" - Sub LoadPic/FormZP"};
    Image1->clear();
    m_ratio = 0;
    if (!trap([&] { showPicture(path); }) && path != m_noPicture)
        trap([&] { showPicture(m_noPicture); });
    Fit();
    show();
}

void FormZP::showPicture(const QString& path)
{
    const QImage picture = readPhoto(path, screen()->size());
    Image1->setPixmap(QPixmap::fromImage(picture));
    m_ratio = double(picture.width()) / picture.height();
}

void FormZP::Fit()
{
    if (isMinimized() || m_ratio <= 0)
        return;
    const QSize picture = QSizeF(m_ratio, 1).scaled(m_room, Qt::KeepAspectRatio).toSize();
    m_fitted = picture.expandedTo({1, 1});
    if (!isMaximized() && !isFullScreen())
        resize(m_fitted);
    Image1->setGeometry(QRect(
        QPoint((width() - m_fitted.width()) / 2, (height() - m_fitted.height()) / 2), m_fitted));
    if (!m_movedByUser)
        moveToCorner();
}

void FormZP::moveToCorner()
{
    const QScopedValueRollback placing(m_placing, true);
    const QRect display = screen()->availableGeometry();
    m_corner = {display.right() + 1 - frameGeometry().width(), display.top()};
    move(m_corner);
}

void FormZP::resizeEvent(QResizeEvent* event)
{
    Screen::resizeEvent(event);
    if (size() == m_fitted)
        return;
    m_room = size();
    Fit();
}

void FormZP::moveEvent(QMoveEvent* event)
{
    Screen::moveEvent(event);
    // A window manager may put a new window a little elsewhere, for its frame or a panel.
    constexpr int nearby = 80;
    if (!m_placing && isVisible() && (pos() - m_corner).manhattanLength() > nearby)
        m_movedByUser = true;
}

void FormZP::showEvent(QShowEvent* event)
{
    Screen::showEvent(event);
    if (!m_movedByUser)
        moveToCorner();
}

} // namespace library
