#pragma once

#include <memory>
#include <vector>

#include "import/tidy/Aliases.h"
#include "import/tidy/Proposal.h"
#include "import/tidy/Roster.h"
#include "workbooks/model/Workbook.h"

namespace tidy {

/// What a workbook is read by. Both must outlive it.
struct Sources
{
    const Aliases& aliases;
    const Roster& roster;
};

/// What a column can be taken for, 不导入 first, in the order in which it is offered.
std::vector<ColumnUse> possibleUses(Goal goal, const Roster& roster);

/// How the workbook looks like being meant. Changes nothing. Throws runtime::Error only for a
/// workbook that was closed.
Proposal propose(excel::Workbook& book, Goal goal, const Sources& sources);

/// The proposal after the user changed something in it (`Choices.h`): everything that the program
/// decided is decided anew, everything is counted anew.
void reconsider(Proposal& proposal, excel::Workbook& book, const Sources& sources);

/// The name of the sheet of the result that lists the rows which are not in it.
extern const QString LeftOutSheet;

/// A new workbook in the form that the import wants: 班级, 学号, 姓名 and the further columns, a
/// sheet for each stream of an exam. Behind these stands LeftOutSheet if rows of students were left
/// out. Throws runtime::Error with the first question while the proposal is not decided.
std::unique_ptr<excel::Workbook> tidied(excel::Workbook& book, const Proposal& proposal,
                                        const Sources& sources);

} // namespace tidy
