#pragma once

#include <vector>

#include <QHash>
#include <QStringList>

#include "import/ImportState.h"
#include "workbooks/model/Worksheet.h"

namespace importing {

/// A row of a sheet of exam results: class and number read as numbers, the name without blanks
/// around it.
struct SheetStudent
{
    double classNumber = 0;
    double number = 0;
    QString name;
};

/// The student of row `row`, counted from 1.
SheetStudent studentIn(const excel::Worksheet& sheet, int row);

/// What is read from a cell where a score is expected. Empty cells and error cells are scores here:
/// badScoreReason tells of them.
enum class ScoreReading {
    Score,           ///< a number, 缺考 or 作弊
    NumberAtTheHead, ///< a text such as 87分
    NoNumber         ///< a text that counts as 0
};

ScoreReading scoreReading(const runtime::Value& cell);

/// Texts that stand where a score is expected, with their counts.
using TextCounts = QHash<QString, int>;

/// Scores that are neither a number nor 缺考 nor 作弊.
struct OddTexts
{
    /// Stored as 0.
    TextCounts withoutNumber;
    /// Stored as the number at their head, such as 87分.
    TextCounts withNumber;
};

/// Which rows of a sheet of exam results an import takes, and what they hold. It ends at the first
/// row without a number. Looks at the cells alone.
class SheetRows
{
public:
    static constexpr int First = 2;
    /// The last row that is looked at.
    static constexpr int Last = 65555;

    /// `sheet` must outlive it.
    explicit SheetRows(const excel::Worksheet& sheet);

    /// The row behind the last one that is taken.
    int end() const { return m_end; }
    /// Why the rows from end() on are not taken.
    QString whyItEnds() const;

    /// The classes, in the order in which they come up.
    std::vector<double> classes() const;
    std::vector<SheetStudent> students() const;
    OddTexts oddTexts(const std::vector<ImportSubject>& subjects) const;

    /// The rows from end() on that hold a class, number, name or score and are not taken.
    std::vector<int> rowsLeft(const std::vector<ImportSubject>& subjects) const;

private:
    const excel::Worksheet& m_sheet;
    int m_end = First;
};

} // namespace importing
