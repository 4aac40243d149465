#pragma once

#include <QString>

class QMimeData;

namespace shell {

/// By its name; what is in it is judged when it is opened.
bool isLibrary(const QString& path);
bool isWorkbook(const QString& path);

/// The first local file of a drop that is a library or a workbook; "" for none.
QString droppedFile(const QMimeData* data);

} // namespace shell
