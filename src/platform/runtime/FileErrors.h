#pragma once

#include <QFileDevice>
#include <QString>

namespace runtime {

/// Why a file could not be used, in words for a message: "没有权限". Qt's own texts are those of
/// the C library, which are English.
QString fileErrorText(QFileDevice::FileError error);
/// The same for an error number of the system (errno).
QString systemErrorText(int number);

} // namespace runtime
