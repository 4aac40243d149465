#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "import/tidy/Roster.h"

namespace tidy {

/// A text that names a class, taken apart.
struct ClassName
{
    /// The number in the text: 1 of 高三(1)班.
    double number = 0;
    /// Numbers that the class may have in a library, that one ahead: 1, 301, 31 …
    std::vector<double> candidates;
    /// The text says more than a number, so that the candidates differ in likelihood.
    bool hasGrade = false;
    /// 10 of 高一, 7 of 初一 and 七年级, 1 of 一年级, 2023 of 2023级; 0 where the text names none.
    int grade = 0;
    /// 文 or 理; empty where the text names none.
    QString stream = {};
};

/// Whether two texts tell of different grades or streams, so that one number is not one class.
bool areOfDifferentKinds(const ClassName& one, const ClassName& other);

/// The class that the name of a sheet tells, whole or in a part of it; empty for dates and for
/// several classes.
QString classInName(const QString& name);

/// The class that a whole text names, such as 3, 3班, 高三(1)班, 2023级12班; nothing for any other
/// text.
std::optional<ClassName> className(const QString& text);

/// The number that a user writes for a class: whole and above 0; nothing for any other text.
std::optional<double> writtenClass(const QString& text);

/// The part of a longer text, such as a title or a file name, that names a class by 班; empty if
/// there is none, or several.
QString classIn(const QString& text);

/// The grade that a longer text names, such as 高三 or 九年级; empty if there is none or several.
QString gradeIn(const QString& text);

} // namespace tidy
