#pragma once

#include "import/tidy/Proposal.h"

namespace tidy {

// What the user changes in a proposal. Each is followed by `reconsider`, which counts anew.

/// Takes a column for something else, on every sheet that has the same heading in that column; a
/// subject below a heading that names none, such as 成绩, counts for this sheet alone. A
/// column that was the class, number, name, stream, subject … of this use so far is left.
void chooseColumn(Proposal& proposal, int sheet, int column, const ColumnUse& use);

/// Takes a whole sheet or leaves it out.
void chooseSheet(Proposal& proposal, int sheet, Taking taking);

/// Says which rows are the headings; what was chosen for the columns of the sheet is forgotten.
void chooseHeading(Proposal& proposal, int sheet, int first, int count);

/// Says where the class comes from. `text` is the title or name for the kinds that have one.
void chooseClassSource(Proposal& proposal, int sheet, ClassFrom from, const QString& text = {});

/// Says which class a text means.
void chooseClass(Proposal& proposal, const QString& text, double number);

/// Says what a mark means.
void chooseMark(Proposal& proposal, const QString& text, MarkUse use);

/// Takes a row that would be left out, or leaves out one that would be taken.
void chooseRow(Proposal& proposal, int sheet, int row, Taking taking);

} // namespace tidy
