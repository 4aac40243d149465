#pragma once

#include <optional>

#include <QString>

#include "platform/database/Connection.h"
#include "platform/runtime/Value.h"

namespace library {

/// What the open library says about single students and about classes. Failures are shown with the
/// routine's tag.
class Students
{
public:
    explicit Students(database::Connection& connection) : m_conn(connection) {}

    /// 类别代码 of the class's first student; 1 if the class has none (after the engine's message).
    runtime::Value GetLeiBie(const runtime::Value& classNumber);
    /// 科类 of the class's first student; 1 if the class has none (after the engine's message).
    runtime::Value GetBJKL(const runtime::Value& classNumber);
    /// How many students the stream has, or one class of it; class 0 means the whole stream.
    qint64 GetZRS(const QString& stream, double classNumber);
    /// 班级 of the student's row in 信息表; nothing if there is none any more. Throws
    /// database::Error.
    std::optional<runtime::Value> classOf(qint64 id);
    /// The student's line: name, class, number, category, stream.
    QString GetGRXX(qint64 id);
    /// The student's value in a rank column of an exam; "" if exam or column is "" or there is no
    /// row.
    QString GetMC(const QString& exam, const QString& column, qint64 id);

private:
    database::Connection& m_conn;
};

/// The number to offer for one more student of a class whose highest number is that: the first one
/// behind it that no row of 成绩表 has in the class. A leaver's would mix up what is looked up by
/// class and number. Throws database::Error.
double freeNumber(database::Connection& connection, double classNumber, double highest);

} // namespace library
