#include "import/tidy/ProposalJson.h"

#include <QJsonArray>

#include "workbooks/model/CellRange.h"

namespace tidy {

using namespace Qt::StringLiterals;

namespace {

QString wordOf(DecidedBy decidedBy)
{
    switch (decidedBy) {
    case DecidedBy::Program:
        return u"program"_s;
    case DecidedBy::Remembered:
        return u"remembered"_s;
    case DecidedBy::User:
        return u"user"_s;
    }
    return {};
}

QString wordOf(ClassFrom from)
{
    switch (from) {
    case ClassFrom::Nowhere:
        return u"nowhere"_s;
    case ClassFrom::Column:
        return u"column"_s;
    case ClassFrom::TitleRows:
        return u"title"_s;
    case ClassFrom::SheetName:
        return u"sheet"_s;
    case ClassFrom::FileName:
        return u"file"_s;
    }
    return {};
}

QString wordOf(RemarkKind kind)
{
    switch (kind) {
    case RemarkKind::NotFound:
        return u"not-found"_s;
    case RemarkKind::SeveralFound:
        return u"several"_s;
    case RemarkKind::Unknown:
        return u"unknown"_s;
    case RemarkKind::NameDiffers:
        return u"name"_s;
    case RemarkKind::ClassDiffers:
        return u"class"_s;
    case RemarkKind::Twice:
        return u"twice"_s;
    case RemarkKind::Nameless:
        return u"nameless"_s;
    case RemarkKind::LostDigits:
        return u"lost-digits"_s;
    case RemarkKind::OddScore:
        return u"odd-score"_s;
    case RemarkKind::OddNumber:
        return u"odd-number"_s;
    }
    return {};
}

template <class Item>
QJsonArray arrayOf(const std::vector<Item>& items, QJsonObject (*json)(const Item&))
{
    QJsonArray all;
    for (const Item& item : items)
        all.append(json(item));
    return all;
}

QJsonObject columnJson(const ColumnProposal& column)
{
    return {{u"column"_s, excel::columnName(column.column)},
            {u"heading"_s, column.heading},
            {u"use"_s, column.use.text()},
            {u"by"_s, wordOf(column.decidedBy)},
            {u"open"_s, column.isOpen},
            {u"reason"_s, column.reason}};
}

QJsonObject rowsJson(const LeftOutRows& rows)
{
    return {{u"first"_s, rows.first}, {u"last"_s, rows.last}, {u"reason"_s, rows.reason}};
}

QJsonObject sheetJson(const SheetProposal& sheet)
{
    return {{u"name"_s, sheet.name},
            {u"taken"_s, sheet.taking == Taking::Take},
            {u"reason"_s, sheet.reason},
            {u"heading"_s,
             QJsonObject{{u"first"_s, sheet.heading.first}, {u"count"_s, sheet.heading.count}}},
            {u"class"_s, QJsonObject{{u"from"_s, wordOf(sheet.classSource.from)},
                                     {u"text"_s, sheet.classSource.text}}},
            {u"columns"_s, arrayOf(sheet.columns, &columnJson)},
            {u"leftOut"_s, arrayOf(sheet.leftOut, &rowsJson)},
            {u"students"_s, sheet.students}};
}

QJsonObject classJson(const ClassReading& reading)
{
    QJsonArray candidates;
    for (const double candidate : reading.candidates)
        candidates.append(candidate);
    return {{u"text"_s, reading.text},
            {u"class"_s, reading.number ? QJsonValue(*reading.number) : QJsonValue()},
            {u"candidates"_s, candidates},
            {u"rows"_s, reading.rows},
            {u"open"_s, reading.isOpen},
            {u"reason"_s, reading.reason}};
}

QJsonObject markJson(const Mark& mark)
{
    return {{u"text"_s, mark.text},
            {u"use"_s, markUseText(mark.use)},
            {u"count"_s, mark.count},
            {u"open"_s, mark.isOpen}};
}

QJsonObject remarkJson(const Remark& remark)
{
    return {{u"kind"_s, wordOf(remark.kind)},
            {u"sheet"_s, remark.sheet},
            {u"row"_s, remark.row},
            {u"text"_s, remark.text},
            {u"leftOut"_s, remark.isLeftOut}};
}

QJsonObject countsJson(const Counts& counts)
{
    return {{u"sheets"_s, counts.sheets},   {u"students"_s, counts.students},
            {u"known"_s, counts.known},     {u"found"_s, counts.found},
            {u"unknown"_s, counts.unknown}, {u"leftOut"_s, counts.leftOut},
            {u"nobody"_s, counts.nobody},   {u"absent"_s, counts.absent},
            {u"cheated"_s, counts.cheated}};
}

QJsonObject resultJson(const ResultCount& result)
{
    return {{u"name"_s, result.name}, {u"students"_s, result.students}};
}

} // namespace

QJsonObject proposalJson(const Proposal& proposal)
{
    return {{u"as"_s, proposal.goal == Goal::ExamScores ? u"exam"_s : u"students"_s},
            {u"decided"_s, proposal.isDecided()},
            {u"questions"_s, QJsonArray::fromStringList(proposal.questions)},
            {u"warnings"_s, QJsonArray::fromStringList(proposal.warnings)},
            {u"counts"_s, countsJson(proposal.counts)},
            {u"results"_s, arrayOf(proposal.results, &resultJson)},
            {u"sheets"_s, arrayOf(proposal.sheets, &sheetJson)},
            {u"classes"_s, arrayOf(proposal.classes, &classJson)},
            {u"marks"_s, arrayOf(proposal.marks, &markJson)},
            {u"remarks"_s, arrayOf(proposal.remarks, &remarkJson)},
            {u"remarksNotKept"_s, proposal.remarksNotKept}};
}

} // namespace tidy
