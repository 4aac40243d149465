#include "maintenance/ui/PhotoBox.h"

#include <QLabel>

#include "platform/widgets/Screen.h"

namespace maintenance {

using namespace Qt::StringLiterals;

PhotoBox::PhotoBox(QWidget* parent) : QFrame(parent)
{
    setFrameShape(QFrame::StyledPanel);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    Image1 = widgets::named(new QLabel(this), u"Image1"_s, u"照片"_s);
    Image1->setScaledContents(true);
    clear();
}

QSize PhotoBox::sizeHint() const
{
    const int height = fontMetrics().lineSpacing() * 14;
    return {height * 3 / 4, height};
}

void PhotoBox::setPhoto(const QImage& photo)
{
    m_photo = photo.size();
    Image1->setPixmap(QPixmap::fromImage(photo));
    fit();
    Image1->show();
}

void PhotoBox::clear()
{
    m_photo = {};
    Image1->clear();
    Image1->hide();
}

void PhotoBox::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    fit();
}

void PhotoBox::fit()
{
    if (m_photo.isEmpty())
        return;
    const QRect room = contentsRect();
    QRect place(QPoint(), m_photo.scaled(room.size(), Qt::KeepAspectRatio).expandedTo({1, 1}));
    place.moveCenter(room.center());
    Image1->setGeometry(place);
}

} // namespace maintenance
