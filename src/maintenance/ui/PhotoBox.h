#pragma once

#include <QFrame>
#include <QImage>

class QLabel;

namespace maintenance {

/// A frame with a photo in it, whole, at its proportions, and in the middle.
class PhotoBox : public QFrame
{
    Q_OBJECT

public:
    explicit PhotoBox(QWidget* parent);

    void setPhoto(const QImage& photo);
    void clear();

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QSize m_photo;
    QLabel* Image1 = nullptr;
};

} // namespace maintenance
