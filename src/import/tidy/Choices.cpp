#include "import/tidy/Choices.h"

#include <algorithm>

namespace tidy {

namespace {

/// What only one column of a sheet can be; columns of subjects are told apart by their names.
void leaveFormerColumn(SheetProposal& sheet, int column, const ColumnUse& use)
{
    for (ColumnProposal& other : sheet.columns) {
        if (other.column == column || other.use != use || use.field == Field::Leave)
            continue;
        other.use = {};
        other.decidedBy = DecidedBy::User;
    }
}

void chooseColumnOf(SheetProposal& sheet, int column, const ColumnUse& use)
{
    leaveFormerColumn(sheet, column, use);
    for (ColumnProposal& chosen : sheet.columns) {
        if (chosen.column != column)
            continue;
        chosen.use = use;
        chosen.decidedBy = DecidedBy::User;
    }
}

} // namespace

void chooseColumn(Proposal& proposal, int sheet, int column, const ColumnUse& use)
{
    const ColumnProposal* wanted = proposal.sheets.at(size_t(sheet)).column(column);
    if (wanted == nullptr)
        return;
    if (wanted->isOfSheet && use.field == Field::Subject) {
        chooseColumnOf(proposal.sheets[size_t(sheet)], column, use);
        return;
    }
    const QString heading = wanted->heading;
    for (SheetProposal& other : proposal.sheets) {
        const ColumnProposal* alike = other.column(column);
        if (alike != nullptr && alike->heading == heading)
            chooseColumnOf(other, column, use);
    }
}

void chooseSheet(Proposal& proposal, int sheet, Taking taking)
{
    SheetProposal& chosen = proposal.sheets.at(size_t(sheet));
    chosen.taking = taking;
    chosen.takingDecidedBy = DecidedBy::User;
}

void chooseHeading(Proposal& proposal, int sheet, int first, int count)
{
    SheetProposal& chosen = proposal.sheets.at(size_t(sheet));
    chosen.heading = {first, std::min(count, HeadingRows::most), DecidedBy::User};
    chosen.columns.clear();
}

void chooseClassSource(Proposal& proposal, int sheet, ClassFrom from, const QString& text)
{
    proposal.sheets.at(size_t(sheet)).classSource = {from, text, DecidedBy::User};
}

void chooseClass(Proposal& proposal, const QString& text, double number)
{
    const auto found =
        std::find_if(proposal.classes.begin(), proposal.classes.end(),
                     [&](const ClassReading& reading) { return reading.text == text; });
    ClassReading& chosen =
        found != proposal.classes.end() ? *found : proposal.classes.emplace_back();
    chosen.text = text;
    chosen.number = number;
    chosen.decidedBy = DecidedBy::User;
}

void chooseMark(Proposal& proposal, const QString& text, MarkUse use)
{
    const auto found = std::find_if(proposal.marks.begin(), proposal.marks.end(),
                                    [&](const Mark& mark) { return mark.text == text; });
    Mark& chosen = found != proposal.marks.end() ? *found : proposal.marks.emplace_back();
    chosen.text = text;
    chosen.use = use;
    chosen.decidedBy = DecidedBy::User;
}

void chooseRow(Proposal& proposal, int sheet, int row, Taking taking)
{
    std::vector<RowChoice>& choices = proposal.sheets.at(size_t(sheet)).rowChoices;
    std::erase_if(choices, [&](const RowChoice& choice) { return choice.row == row; });
    choices.push_back({row, taking});
}

} // namespace tidy
