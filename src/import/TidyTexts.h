#pragma once

#include <vector>

#include "import/tidy/Proposal.h"
#include "platform/grid/FlexGrid.h"
#include "workbooks/model/Worksheet.h"

namespace importing {

// What the screen of tidying says of a proposal, and what it offers.

/// What the result will hold and what is left out, in sentences.
QString countsText(const tidy::Proposal& proposal);

/// The first open questions, a line each; empty if everything is decided.
QString questionsText(const tidy::Proposal& proposal);

/// A sheet's name with how many students are taken from it, or why it is left out.
QString sheetText(const tidy::SheetProposal& sheet);

/// Questions, warnings and what is said of single rows: 类别, 数据表, 行, 说明.
grid::FlexGrid notesGrid(const tidy::Proposal& proposal);

/// The texts that name classes: 原文, 人数, 班级, 说明; a row each behind the heading, in the order
/// of the proposal.
grid::FlexGrid classesGrid(const tidy::Proposal& proposal);
/// The column of the class's number, which can be changed.
inline constexpr int ClassNumberColumn = 2;

/// The texts that stand where scores do: 原文, 次数, 作为, likewise.
grid::FlexGrid marksGrid(const tidy::Proposal& proposal);
/// The column of what a mark means, which can be changed.
inline constexpr int MarkUseColumn = 2;
/// All that a mark can mean.
extern const std::vector<tidy::MarkUse> markUses;

/// All that the class of a sheet can be read from.
std::vector<tidy::ClassSource> classSources(const tidy::Proposal& proposal,
                                            const tidy::SheetProposal& sheet,
                                            const excel::Worksheet& worksheet);
QString classSourceText(const tidy::ClassSource& source);

} // namespace importing
