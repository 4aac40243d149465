#pragma once

#include <array>

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace benchmark {

/// The rows of 成绩表 in a large school: values that are cheap to make, the same each time.
class SchoolScores
{
public:
    static constexpr int exams = 60;
    static constexpr int students = 3000;
    static constexpr int subjects = 14; ///< a total among them
    static constexpr int numberColumns = 5 * subjects + 1;

    /// Of the score, two ranks and two standard scores of each subject; NaN for NULL.
    using Numbers = std::array<double, numberColumns>;

    static QStringList subjectNames();
    /// In the order of Numbers, with the words that declare them in a library of ours.
    static QStringList numberColumnNames();
    static QStringList numberDeclarations();

    static QString examName(int exam);
    static QString studentName(int student);
    static int classOf(int student) { return student / 50 + 1; }
    static int numberOf(int student) { return student % 50 + 1; }
    static Numbers numbers(int exam, int student);
    /// "" for NULL.
    static QString note(int student);
};

/// The photo of a student, 100 KB that are those of no other one.
class SchoolPhotos
{
public:
    static constexpr int students = 3000;
    static constexpr qsizetype size = 100 * 1024;

    SchoolPhotos();
    QByteArray photo(int student) const;

private:
    QByteArray m_noise;
};

/// Libraries of the old engine, about 90 MB and 320 MB. Throws runtime::Error.
void makeOldScores(const QString& path);
void makeOldPhotos(const QString& path);

} // namespace benchmark
