#pragma once

#include <optional>
#include <utility>

#include <QHash>

#include "platform/database/Connection.h"
#include "platform/database/Statement.h"

namespace importing {

/// The students of 信息表 by class and number, read at once at the first question. What it says
/// holds until the user is asked something, since others can write while a question waits.
class KnownStudents
{
public:
    struct Student
    {
        qint64 id = 0;
        QString name;

        /// The name here if a sheet calls the student otherwise; empty for the same name. An import
        /// asks about such a name, and about no other.
        QString otherName(const QString& sheetName) const
        {
            return name == sheetName ? QString() : name;
        }
    };

    explicit KnownStudents(database::Connection& connection) : m_connection(connection) {}

    /// The first student of that class and number (as `Val` reads them), or null. Throws Error.
    const Student* find(double classNumber, double number);

    /// Takes in a student who was just written. Throws Error.
    void add(qint64 id);

    /// Takes in a student who would be written, and has no ID yet. Throws Error.
    void assume(double classNumber, double number, const QString& name);

    /// To be called when students may have changed otherwise.
    void forget() { m_students.reset(); }
    /// Forgets them if another program has written the library since they were read. Throws Error.
    void forgetIfOutdated();

private:
    using Students = QHash<std::pair<double, double>, Student>;

    Students& all();
    static void take(database::Statement& rows, Students& students);

    database::Connection& m_connection;
    std::optional<Students> m_students;
    /// That of the library when they were read.
    qint64 m_dataVersion = 0;
};

} // namespace importing
