#include "import/tidy/ColumnReading.h"

#include <algorithm>
#include <functional>

#include <QRegularExpression>

namespace tidy {

using namespace Qt::StringLiterals;

namespace {

/// A column while it is decided.
struct Candidate
{
    ColumnProposal column;
    HeadingMeaning meaning;
};

using Candidates = std::vector<Candidate>;
using Group = std::vector<Candidate*>;

void open(Candidate& candidate, const QString& reason)
{
    candidate.column.isOpen = true;
    candidate.column.reason = reason;
}

void leave(Candidate& candidate, const QString& reason)
{
    candidate.column.use = {};
    candidate.column.isOpen = false;
    candidate.column.reason = reason;
}

QString reasonOf(const HeadingMeaning& meaning)
{
    if (!meaning.missingSubject.isEmpty() && meaning.score != ScoreKind::Beside)
        return u"没有这个科目，不导入。"_s;
    if (meaning.use.field == Field::Leave)
        return meaning.isKnown ? u"这一列不用导入。"_s : u"表头不认识，不导入。"_s;
    if (meaning.isExact)
        return u"表头就是“%1”。"_s.arg(meaning.use.text());
    return u"按表头认作“%1”。"_s.arg(meaning.use.text());
}

/// A column of scores without the name of a subject belongs to the one that the sheet is of.
void nameSubjectOfSheet(Candidate& candidate, const HeadingWords& words,
                        const QStringList& namesOfSheet)
{
    for (const QString& name : namesOfSheet) {
        const QString subject = words.subjectIn(name);
        if (subject.isEmpty())
            continue;
        candidate.column.use = candidate.meaning.use = {Field::Subject, subject};
        candidate.column.reason = u"“%1”里写着科目。"_s.arg(name);
        return;
    }
    open(candidate, u"看不出是哪一科的成绩。"_s);
}

/// 数学（文） is the subject for a part of the students.
void openPartOfSubject(Candidate& candidate, const HeadingCell& heading, const HeadingWords& words)
{
    static const QRegularExpression ofStream(u"^[文理]科?.|.[文理]科?[卷类]?$"_s);
    const QString whole = heading.joined();
    const QString subject = words.subjectIn(whole);
    if (candidate.meaning.isKnown || subject.isEmpty() || !ofStream.match(folded(whole)).hasMatch())
        return;
    candidate.column.use = candidate.meaning.use = {Field::Subject, subject};
    open(candidate, u"可能只是一部分学生的“%1”，请确定。"_s.arg(subject));
}

Candidate candidateOf(int column, const HeadingCell& heading, const HeadingWords& words,
                      const QStringList& namesOfSheet)
{
    Candidate candidate{{.column = column, .heading = heading.joined().simplified()},
                        words.meaning(heading)};
    candidate.column.use = candidate.meaning.use;
    candidate.column.reason = reasonOf(candidate.meaning);
    candidate.column.isOfSheet = candidate.meaning.score == ScoreKind::OfSheet;
    if (candidate.column.isOfSheet)
        nameSubjectOfSheet(candidate, words, namesOfSheet);
    if (!candidate.meaning.choices.isEmpty() && candidate.meaning.score != ScoreKind::Beside)
        open(candidate, u"可能是%1，请选择。"_s.arg(candidate.meaning.choices.join(u'、')));
    if (candidate.meaning.score == ScoreKind::Former && !candidate.column.use.name.isEmpty())
        open(candidate, u"像是上一次考试的成绩，请选择。"_s);
    if (candidate.meaning.score == ScoreKind::Whole && !candidate.column.use.name.isEmpty())
        open(candidate, u"不知道这是“%1”的成绩还是几科的总分。"_s.arg(candidate.column.use.name));
    openPartOfSubject(candidate, heading, words);
    if (heading.isEmpty())
        candidate.column.reason = u"没有表头，不导入。"_s;
    return candidate;
}

void keepChoice(ColumnProposal& column, const SheetProposal& sheet, const HeadingWords& words)
{
    const ColumnProposal* former = sheet.column(column.column);
    if (former == nullptr || former->decidedBy == DecidedBy::Program
        || former->heading != column.heading || !words.offers(former->use))
        return;
    column.use = former->use;
    column.decidedBy = former->decidedBy;
    column.isOpen = false;
    column.reason =
        former->decidedBy == DecidedBy::User ? u"您选择的。"_s : u"和上次确认的一样。"_s;
}

/// The columns of one use that the program decided; none if somebody else chose one.
Group programsColumns(Candidates& all, const ColumnUse& use)
{
    Group group;
    for (Candidate& candidate : all) {
        if (candidate.column.use != use)
            continue;
        if (candidate.column.decidedBy == DecidedBy::Program)
            group.push_back(&candidate);
    }
    return group;
}

bool isChosen(const Candidates& all, const ColumnUse& use)
{
    return std::any_of(all.begin(), all.end(), [&](const Candidate& candidate) {
        return candidate.column.use == use && candidate.column.decidedBy != DecidedBy::Program;
    });
}

Group those(const Group& group, const std::function<bool(const Candidate&)>& are)
{
    Group found;
    std::copy_if(group.begin(), group.end(), std::back_inserter(found),
                 [&](const Candidate* candidate) { return are(*candidate); });
    return found;
}

/// One of the group is it, the others are left.
void settle(const Group& group, const Candidate* taken, const QString& reason)
{
    for (Candidate* candidate : group) {
        if (candidate != taken)
            leave(*candidate, reason);
    }
}

void settleKeys(Candidates& all, const ColumnUse& use)
{
    const Group group = programsColumns(all, use);
    if (isChosen(all, use)) {
        settle(group, nullptr, u"“%1”用的是另一列。"_s.arg(use.text()));
        return;
    }
    if (group.size() < 2)
        return;
    const Group exact = those(group, [](const Candidate& one) { return one.meaning.isExact; });
    if (exact.size() == 1) {
        settle(group, exact.front(), u"已经有“%1”一列，这一列不用导入。"_s.arg(use.text()));
        return;
    }
    for (Candidate* candidate : group)
        open(*candidate,
             u"有 %1 列都像“%2”，请选择一列。"_s.arg(QString::number(group.size()), use.text()));
}

void settleScores(Candidates& all, const ColumnUse& use)
{
    const Group group = programsColumns(all, use);
    if (isChosen(all, use)) {
        settle(group, nullptr, u"“%1”用的是另一列。"_s.arg(use.text()));
        return;
    }
    if (group.size() < 2)
        return;
    const auto are = [&](ScoreKind kind) {
        return those(group, [kind](const Candidate& one) { return one.meaning.score == kind; });
    };
    const Group raw = are(ScoreKind::Raw);
    if (raw.size() == 1 && are(ScoreKind::Bare).empty()) {
        settle(group, raw.front(), u"“%1”用的是原始分数一列。"_s.arg(use.name));
        raw.front()->column.isOpen = false;
        return;
    }
    const bool isBesideAssigned = !are(ScoreKind::Assigned).empty();
    for (Candidate* candidate : group)
        open(*candidate, (isBesideAssigned ? u"“%1”既有原始分又有赋分，请选择用哪一列。"_s
                                           : u"有几列都像“%1”，请选择一列。"_s)
                             .arg(use.name));
}

void settleAll(Candidates& all, Goal goal)
{
    std::vector<ColumnUse> seen;
    for (const Candidate& candidate : all) {
        const ColumnUse use = candidate.column.use;
        if (use.field == Field::Leave || std::find(seen.begin(), seen.end(), use) != seen.end())
            continue;
        seen.push_back(use);
    }
    for (const ColumnUse& use : seen) {
        if (use.field == Field::Subject)
            settleScores(all, use);
        else if (use.field != Field::Stream || goal == Goal::StudentList)
            settleKeys(all, use);
    }
}

/// A column of assigned marks alone is what there is to take.
void tellAssigned(Candidates& all)
{
    for (Candidate& candidate : all) {
        ColumnProposal& column = candidate.column;
        if (column.use.field == Field::Subject && !column.isOpen
            && candidate.meaning.score == ScoreKind::Assigned
            && column.decidedBy == DecidedBy::Program)
            column.reason = u"只有“%1”的赋分，用的是赋分。"_s.arg(column.use.name);
    }
}

} // namespace

void readColumns(SheetProposal& sheet, const SheetView& view, const HeadingWords& words, Goal goal,
                 const QStringList& namesOfSheet)
{
    Candidates all;
    int column = 0;
    for (const HeadingCell& heading : view.headings(sheet.heading.first, sheet.heading.count)) {
        all.push_back(candidateOf(++column, heading, words, namesOfSheet));
        keepChoice(all.back().column, sheet, words);
    }
    settleAll(all, goal);
    tellAssigned(all);
    sheet.columns.clear();
    for (Candidate& candidate : all)
        sheet.columns.push_back(std::move(candidate.column));
}

QString missingSubjectText(const ColumnProposal& column, const HeadingWords& words,
                           const HeadingCell& heading)
{
    const HeadingMeaning meaning = words.meaning(heading);
    if (meaning.missingSubject.isEmpty() || column.use.field != Field::Leave
        || meaning.score == ScoreKind::Beside || meaning.score == ScoreKind::Whole
        || column.decidedBy != DecidedBy::Program)
        return {};
    return u"没有科目“%1”，表里的“%2”一列没有导入。"_s.arg(meaning.missingSubject, column.heading);
}

} // namespace tidy
