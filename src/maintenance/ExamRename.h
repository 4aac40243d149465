#pragma once

#include <QStringList>

#include "platform/database/Connection.h"

namespace maintenance {

/// The exams of 考试名称表 by 考试编号, each once, also those that lists pass over. Throws Error.
QStringList examsByNumber(database::Connection& connection);

/// Why the exam cannot get this name: it is empty, too long, cannot be told from another one, holds
/// what separates names or what a statement cannot hold, or something in the library bears it
/// already. "" if it can. Throws Error.
QString renameFault(database::Connection& connection, const QString& exam, const QString& name);

/// The exams, by their names then, that lists show now and pass over once the exam has the name.
/// Throws Error.
QStringList hiddenByRename(database::Connection& connection, const QString& exam,
                           const QString& name);

/// Gives the exam the name in every table that names exams, and in the setting that lists some. To
/// be called within a WriteBatch. Throws Error.
void renameExam(database::Connection& connection, const QString& exam, const QString& name);

} // namespace maintenance
