#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace runtime {

/// Bytes of a text file as text: UTF-8 (with or without mark), or GB18030 if they are not valid
/// UTF-8, which is how files of other school software come.
QString decodeText(const QByteArray& bytes);

/// Reads the non-empty lines of a text file into `list`, in file order, dropping what the list
/// held. A file that does not exist leaves the list as it was. Throws Error where it cannot be
/// read.
void readLines(const QString& file, QStringList& list);

/// readLines for the lists of defaults; a failure is shown in a message.
void ReadTxtSet(const QString& file, QStringList& list);

/// Replaces a text file whole, as UTF-8: the new content stands complete or the old file stays.
/// Throws Error.
void writeTextFile(const QString& file, const QString& text);

} // namespace runtime
