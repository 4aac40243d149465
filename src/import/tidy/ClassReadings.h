#pragma once

#include "import/tidy/ClassNames.h"
#include "import/tidy/Proposal.h"

namespace tidy {

/// Says which class each text means: the one that the roster has, the number in the text where
/// there are no students, and what was chosen.
class ClassReadings
{
public:
    ClassReadings(const std::vector<ClassReading>& former, const Roster& roster);

    /// Reads the text of one more row. `grade` is that of its sheet, and may be empty.
    void count(const QString& text, const QString& grade);
    /// To be called behind the last row: opens readings of several grades or streams that share a
    /// number, and settles those of which the others rule out all but one.
    void settle();
    /// The class of a row that was counted.
    std::optional<double> numberOf(const QString& text, const QString& grade) const;
    /// All of them, in the order in which they came up.
    const std::vector<ClassReading>& readings() const { return m_readings; }

private:
    static QString keyOf(const QString& text, const QString& grade);
    int placeOf(const QString& text, const QString& grade);
    ClassReading read(const QString& text) const;
    void addSimilar(ClassReading& reading) const;
    void decide(ClassReading& reading, const ClassName& name) const;
    void openShared();
    void takePlain();

    const Roster& m_roster;
    std::vector<ClassReading> m_former;
    std::vector<ClassReading> m_readings;
    QHash<QString, int> m_placeOf;
    QHash<std::pair<QString, QString>, int> m_placeOfCell; // by text and grade
};

} // namespace tidy
