#pragma once

#include <QPixmap>
#include <QWidget>

namespace widgets {

/// A widget with a picture behind its children. The picture covers it whole, paled towards the
/// palette's own background so that texts stay readable in light and in dark.
class Backdrop : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Throws runtime::Error if there is no such picture; the plain background stays then.
    void LoadPicture(const QString& path);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_picture;
};

} // namespace widgets
