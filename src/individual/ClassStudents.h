#pragma once

#include <vector>

#include "individual/ChartRanks.h"

namespace individual {

/// A student of a class as 信息表 has him.
struct ClassStudent
{
    qint64 id = 0;
    QString number;
    QString name;

    friend bool operator==(const ClassStudent&, const ClassStudent&) = default;
};

/// The students of a class in the order of the table. Throws runtime::Error.
std::vector<ClassStudent> studentsOfClass(library::ScoreLibrary& scores, double classNumber);

/// The charts of a whole class.
struct ClassChartsRequest
{
    double classNumber = 0;
    std::vector<TickedColumn> ticked; ///< in the order of the library's columns
    RankKind kind = RankKind::Grade;
};

/// "3 班 12 号 王五"
QString studentHeading(double classNumber, const ClassStudent& student);

/// Names of the students' picture files, parallel to them: fit for any disk, and each another one.
QStringList pictureNames(double classNumber, const std::vector<ClassStudent>& students);

} // namespace individual
