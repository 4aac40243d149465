#pragma once

#include <QString>

namespace runtime {

/// The text with "_" in the places of what stands in no file name on one system or another: signs
/// of folders and patterns, control characters, marks of direction.
QString fileNameFrom(QString text);

/// `path` with as many "_" ahead of its ending as make it another than all in `taken`. Names that
/// differ in case only are the same on some disks.
QString freeFileName(QString path, const QStringList& taken);

} // namespace runtime
