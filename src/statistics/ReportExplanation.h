#pragma once

#include <vector>

#include "library/ScoreLibrary.h"
#include "statistics/NamedReports.h"

namespace statistics {

/// A setting that a report goes by, as it is in force in the library.
struct SettingInForce
{
    /// As 设置表 names it.
    QString name;
    /// The text of 设置.
    QString value;
    /// What it means for these exams, a sentence each.
    QStringList meaning;
};

/// What the figures of a report stand for.
struct Explanation
{
    QString report;
    /// What is counted, over whom, who is left out, and how it is computed.
    QString counted;
    QStringList over;
    QString leftOut;
    QStringList formulas;
    std::vector<SettingInForce> settings;
};

/// The names that can be explained: the reports, 综合分析, and the columns of scoring.
QStringList explainedReports();

/// The one of explainedReports() that this name belongs to, as 低分段 to "高分段、低分段"; "" for a
/// name that cannot be explained.
QString explainedName(const QString& report);

/// What a report counts in this library, under its settings and the category filter in force; of
/// exams that are given, with the marks that the settings come to: those of all together, or of
/// each exam where each is a table. Throws Error for a name that cannot be explained.
Explanation explain(const QString& report, library::ScoreLibrary& scoreLibrary,
                    const QStringList& exams, ExamGrouping tables);

/// The chapter of the guide about all of them, in Markdown.
QString explanationChapter();

} // namespace statistics
