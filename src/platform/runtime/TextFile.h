#pragma once

#include <QString>
#include <QStringList>

namespace runtime {

/// Reads the non-empty lines of a text file into `list`, in file order, dropping what the list
/// held. A file that does not exist leaves the list as it was. Throws Error where it cannot be
/// read.
void readLines(const QString& file, QStringList& list);

/// All lines of a text file, the empty ones too; none if there is no such file. Throws Error where
/// it cannot be read.
QStringList readAllLines(const QString& file);

/// readLines for the lists of defaults; a failure is shown in a message.
void ReadTxtSet(const QString& file, QStringList& list);

/// Replaces a text file whole, as UTF-8: the new content stands complete or the old file stays.
/// Throws Error.
void writeTextFile(const QString& file, const QString& text);

} // namespace runtime
