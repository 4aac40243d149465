#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "library/ScoreLibrary.h"

namespace maintenance {

/// A class as it is when a student is added to it.
struct ClassRoster
{
    struct Student
    {
        qint64 id = 0;
        double number = 0;
        QString name;
    };

    /// By number.
    std::vector<Student> students;
    /// Those of the student who was entered first; of a class without students "" and Null.
    QString stream;
    runtime::Value category;

    bool isNew() const { return students.empty(); }
    /// The number to offer, as library::freeNumber.
    double freeNumber = 1;
    /// The names of those who have the number, as messages show them.
    QStringList namesOf(double number) const;
};

/// A student as he is typed.
struct NewStudent
{
    QString classNumber;
    QString number;
    QString name;
    /// Counts in a class that has no students; others give theirs.
    QString stream;
    /// Further columns of 信息表 and their texts; empty ones stay empty.
    std::vector<std::pair<QString, QString>> details;
    /// Counts in a class that has no students, as the stream does; empty for that of the field.
    QString category = {};
};

/// "添加学生": puts single students into 信息表.
class StudentAddition
{
public:
    explicit StudentAddition(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// The classes in ascending order; none, after the message, if they cannot be read.
    std::vector<double> classes() const;
    /// The streams that a new class can have.
    QStringList streams() const;
    /// The columns that can be filled besides class, number, name and stream.
    QStringList details() const;
    /// The class, empty for a text that is no class's number; nothing, after the message, if it
    /// cannot be read.
    std::optional<ClassRoster> roster(const QString& classNumber) const;

    /// Adds the student with his class's stream and category and gives his ID. A number that is
    /// taken, and whatever else is wrong, is refused by a message; of a name that the class has
    /// already it is asked. Nothing if he was not added; the library is as it was then. Tells the
    /// library's followers.
    std::optional<qint64> add(const NewStudent& student);

private:
    bool mayAdd(const NewStudent& student) const;
    QString faultOf(const NewStudent& student, const ClassRoster& roster) const;
    QString streamFault(const QString& stream) const;
    ClassRoster readRoster(double classNumber) const;
    qint64 write(const NewStudent& student) const;

    library::ScoreLibrary& m_library;
};

} // namespace maintenance
