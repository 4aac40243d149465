#pragma once

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace support {

/// Drops a file on a window, and lets the window take it up. False if it refuses the file.
inline bool dropOn(QWidget& window, const QString& file)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    QDragEnterEvent enter({9, 9}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent fall(QPointF(9, 9), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &fall);
    // What was dropped is taken once the drop is over.
    QApplication::processEvents();
    return true;
}

} // namespace support
