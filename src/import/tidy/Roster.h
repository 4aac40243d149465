#pragma once

#include <optional>
#include <vector>

#include <QHash>
#include <QString>
#include <QStringList>

#include "import/tidy/Aliases.h"
#include "library/ScoreLibrary.h"

namespace tidy {

struct RosterStudent
{
    double classNumber = 0;
    double number = 0;
    QString name;
    QString stream = {};
    /// Empty where the library has no such column or the student has none.
    QString examNumber = {};
    QString schoolNumber = {};
};

/// What a workbook is tidied for: the subjects and columns of a library and its students.
class Roster
{
public:
    /// Of an open library. Throws runtime::Error.
    static Roster ofLibrary(library::ScoreLibrary& scores, const Aliases& aliases);
    /// Without a library: the subjects of data/科目.txt and no students. Throws runtime::Error.
    static Roster ofShippedSubjects(const runtime::AppPaths& paths);

    Roster() = default;
    Roster(QStringList subjects, std::vector<RosterStudent> students);

    /// Names of subjects, in the library's order; no totals.
    const QStringList& subjects() const { return m_subjects; }
    /// The columns of 信息表 that a list of students can bring, beside 班级, 学号, 姓名 and 科类.
    static const QStringList& studentColumns();
    const std::vector<RosterStudent>& students() const { return m_students; }
    bool hasStudents() const { return !m_students.empty(); }
    /// The classes that have students, ascending.
    std::vector<double> classes() const;
    bool hasClass(double number) const { return m_byClass.contains(number); }
    /// 科类 of the class's first student, as the import takes it; empty for a class without
    /// students.
    QString streamOf(double classNumber) const;

    using Found = std::vector<const RosterStudent*>;
    /// By class and number, which a library can have several times.
    Found at(double classNumber, double number) const;
    /// By name, blanks ignored, in one class.
    Found named(double classNumber, const QString& name) const;
    /// By name in the whole school.
    Found named(const QString& name) const;
    /// By 考号, or by 学籍号; zeros at the head do not count.
    Found withExamNumber(const QString& number) const;
    Found withSchoolNumber(const QString& number) const;

private:
    using Index = QMultiHash<QString, int>;
    void index();
    template <class Key> Found found(const QMultiHash<Key, int>& index, const Key& key) const;

    QStringList m_subjects;
    std::vector<RosterStudent> m_students;
    QHash<double, int> m_byClass; // the first student
    QMultiHash<std::pair<double, double>, int> m_byNumber;
    Index m_byName;
    Index m_byExamNumber;
    Index m_bySchoolNumber;
};

} // namespace tidy
