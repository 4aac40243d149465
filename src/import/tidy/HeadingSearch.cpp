#include "import/tidy/HeadingSearch.h"

#include <algorithm>
#include <set>

namespace tidy {

namespace {

/// Filled rows that are looked at for headings.
constexpr int rowsTried = 40;

bool namesStudents(Field field)
{
    return field == Field::Name || field == Field::Number || field == Field::ExamNumber
           || field == Field::SchoolNumber;
}

/// How much rows look like headings: 0 if they are none, more the more columns are known and the
/// more differently; a second column of one meaning does not count.
int strength(const SheetView& view, const HeadingWords& words, int first, int count)
{
    int passedOver = 0;
    bool hasStudents = false;
    bool hasTwo = false;
    std::set<std::pair<QString, ScoreKind>> different;
    for (const HeadingCell& heading : view.headings(first, count)) {
        const HeadingMeaning meaning = words.meaning(heading);
        if (!meaning.isKnown)
            continue;
        hasTwo = hasTwo || (!heading.upper.isEmpty() && !heading.lower.isEmpty());
        hasStudents = hasStudents || namesStudents(meaning.use.field);
        const bool isTaken = meaning.use.field != Field::Leave;
        passedOver += isTaken ? 0 : 1;
        if (isTaken)
            different.insert({meaning.use.text(), meaning.score});
    }
    const bool isHeading = hasStudents && (count == 1 || hasTwo) && !different.empty()
                           && int(different.size()) + passedOver > 1;
    return isHeading ? passedOver + 2 * int(different.size()) : 0;
}

/// A row of headings has texts alone.
bool holdsTextsOnly(const SheetView& view, int row)
{
    const std::vector<FilledCell> cells = view.cells(row);
    return std::all_of(cells.begin(), cells.end(), [](const FilledCell& cell) {
        return cell.value.kind() == runtime::Value::Kind::Text;
    });
}

} // namespace

HeadingRows findHeading(const SheetView& view, const HeadingWords& words)
{
    HeadingRows best;
    int strongest = 0;
    const auto consider = [&](int row, int count) {
        // Of equals, one row: a title above it would be taken for an upper heading.
        const int found = 2 * strength(view, words, row, count) - (count - 1);
        if (found <= strongest)
            return;
        strongest = found;
        best = {row, count};
    };
    int tried = 0;
    for (int row = 1; row <= view.lastRow() && tried < rowsTried; row = view.nextRow(row)) {
        if (view.cells(row).empty() || !holdsTextsOnly(view, row))
            continue;
        ++tried;
        consider(row, 1);
        if (row < view.lastRow() && holdsTextsOnly(view, row + 1))
            consider(row, 2);
    }
    return best;
}

} // namespace tidy
