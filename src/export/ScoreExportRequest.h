#pragma once

#include <optional>

#include <QString>
#include <QStringList>

#include "library/ScoreLibrary.h"

namespace exporting {

/// What follows the rows of a student: blank rows, or a chart of his ranks down to the page's end.
enum class BlockLayout { BlankRows, RankChart };

/// A box that adds a row of averages, with the exam beside it.
struct AverageBox
{
    bool ticked = false;
    /// The text in the box of exams, chosen or not.
    QString exam = QStringLiteral("选择考试");
    /// True once the text is one of the exams.
    bool chosen = false;

    friend bool operator==(const AverageBox&, const AverageBox&) = default;
};

/// What is exported, and how. Exams, subjects and classes are those selected, in the order of their
/// lists.
struct ScoreExportRequest
{
    QStringList exams;
    QStringList subjects; ///< subjects and totals
    QStringList classes;
    /// Class, number and name in a row of their own instead of in each row.
    bool infoRow = false;
    AverageBox classAverage;
    AverageBox gradeAverage;
    BlockLayout layout = BlockLayout::BlankRows;
    QString blankRows = QStringLiteral("2"); ///< as typed
    /// The row of the grade's averages shows the exam of its own box, not that of the class's.
    bool gradeAverageByItsExam = false;
    /// No page ends within the rows of a student, where he fits on one.
    bool keepBlocksTogether = false;
    /// In place of the list that the library has saved for the layout.
    std::optional<QStringList> columns;
};

/// Under what name a layout's list of columns is saved in 自定义显示表.
QString displayName(BlockLayout layout);

/// The columns of a student's block: those saved for the layout, or else the exam, the student
/// unless he has a row of his own, and each subject with its rank in the grade. They become the
/// library's DisplayItems too.
QStringList ZDYxs(library::ScoreLibrary& scoreLibrary, const ScoreExportRequest& request);

/// What of the request the library does not have any more, exams or columns that a list was saved
/// with; empty if all is there. The export does without. Throws database::Error.
QString goneNote(library::ScoreLibrary& scoreLibrary, const ScoreExportRequest& request);

/// The message about what is not chosen; empty if exams, subjects and classes are.
QString missingChoice(const ScoreExportRequest& request);

/// The message that there is no total to draw charts of; empty if there is, or none are drawn.
QString missingTotal(const ScoreExportRequest& request);

/// What the user should know before an export that will not be refused; empty if there is nothing.
QString averageNote(const ScoreExportRequest& request);

} // namespace exporting
