#pragma once

#include "platform/widgets/Screen.h"

class QLabel;

namespace library {

/// "照片": the small window beside another screen that shows a student's photo. It stands in the
/// top right corner of the display until the user moves it, and keeps the picture's proportions
/// within the size that the user gave it.
class FormZP : public widgets::Screen
{
    Q_OBJECT

public:
    /// `noPicture` is the file that is shown for a photo that cannot be read.
    FormZP(const QString& noPicture, QWidget* owner);

    /// Shows the picture of a file, and this window without taking the keyboard. A file that is no
    /// picture is told.
    void LoadPic(const QString& path);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void Form_Load();
    void showPicture(const QString& path);
    void Fit();
    void moveToCorner();

    QString m_noPicture;
    /// Width by height of the picture; 0 for none.
    double m_ratio = 0;
    /// What the user gave the window, in which the picture is fitted.
    QSize m_room;
    QSize m_fitted;
    QPoint m_corner;
    bool m_placing = false;
    bool m_movedByUser = false;
    QLabel* Image1 = nullptr;
};

} // namespace library
