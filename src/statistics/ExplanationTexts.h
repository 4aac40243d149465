#pragma once

#include <vector>

#include <QStringList>

namespace statistics {

/// How the value of a setting reads.
enum class SettingForm { Interval, Lines, Widths, Teachers, Columns, Conversion, Plain };

/// A row of 设置表 that a report goes by.
struct SettingUse
{
    QString name;
    SettingForm form;
};

/// The categories of students that a report is limited to.
enum class Categories { Chosen, Ignored, OfAnalysis };

/// What a report says, in words that hold in every library.
struct ExplanationText
{
    QString report;
    /// Other names that it goes by.
    QStringList otherNames;
    QString counted;
    QString over;
    /// What becomes of several exams that are reported on together.
    QString severalExams = {};
    QString leftOut;
    QStringList formulas;
    std::vector<SettingUse> settings;
    Categories categories = Categories::Chosen;
};

/// All of them, in the order of the guide.
const std::vector<ExplanationText>& explanationTexts();

/// What a report is limited to by categories, where the user does not look at one library.
QString categoryRule(Categories categories);

} // namespace statistics
