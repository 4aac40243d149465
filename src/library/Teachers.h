#pragma once

#include <QString>
#include <QStringList>

#include "platform/database/Connection.h"

namespace library {

/// Who taught what in an exam. Failures are shown with the routine's tag.
class Teachers
{
public:
    explicit Teachers(database::Connection& connection) : m_conn(connection) {}

    /// The subject's teacher of the class in the exam, or "".
    QString GetJSMD(const QString& exam, double classNumber, const QString& subject);
    /// The same for several subjects at once, parallel to them.
    QStringList ofSubjects(const QString& exam, double classNumber, const QStringList& subjects);

private:
    database::Connection& m_conn;
};

} // namespace library
