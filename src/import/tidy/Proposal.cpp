#include "import/tidy/Proposal.h"

#include <algorithm>

namespace tidy {

using namespace Qt::StringLiterals;

QString fieldText(Field field)
{
    switch (field) {
    case Field::Leave:
        return u"不导入"_s;
    case Field::Class:
        return u"班级"_s;
    case Field::Number:
        return u"学号"_s;
    case Field::Name:
        return u"姓名"_s;
    case Field::ExamNumber:
        return u"考号"_s;
    case Field::SchoolNumber:
        return u"学籍号"_s;
    case Field::Stream:
        return u"科类"_s;
    case Field::Subject:
        return u"科目"_s;
    case Field::StudentColumn:
        return u"学生信息"_s;
    }
    return {};
}

QString markUseText(MarkUse use)
{
    switch (use) {
    case MarkUse::Absent:
        return u"缺考"_s;
    case MarkUse::Cheated:
        return u"作弊"_s;
    case MarkUse::AsItStands:
        return u"不变"_s;
    }
    return {};
}

int SheetProposal::columnOf(Field field) const
{
    const auto found =
        std::find_if(columns.begin(), columns.end(),
                     [&](const ColumnProposal& column) { return column.use.field == field; });
    return found == columns.end() ? 0 : found->column;
}

const ColumnProposal* SheetProposal::column(int number) const
{
    const auto found =
        std::find_if(columns.begin(), columns.end(),
                     [&](const ColumnProposal& column) { return column.column == number; });
    return found == columns.end() ? nullptr : &*found;
}

const LeftOutRows* SheetProposal::leftOutAt(int row) const
{
    const auto behind =
        std::upper_bound(leftOut.begin(), leftOut.end(), row,
                         [](int wanted, const LeftOutRows& rows) { return wanted < rows.first; });
    if (behind == leftOut.begin() || std::prev(behind)->last < row)
        return nullptr;
    return &*std::prev(behind);
}

QString resultsText(const Proposal& proposal)
{
    if (proposal.results.size() < 2)
        return {};
    QString names;
    for (const ResultCount& result : proposal.results)
        names += u"“%1”"_s.arg(result.name);
    return u"按科类分成%1 %2 张数据表，各导入一次。"_s.arg(names).arg(proposal.results.size());
}

QString nobodyText(const Proposal& proposal)
{
    if (proposal.counts.nobody == 0)
        return {};
    return (proposal.goal == Goal::ExamScores ? u"%1 行有分数、没有姓名"_s
                                              : u"%1 行有数字、没有姓名"_s)
        .arg(proposal.counts.nobody);
}

} // namespace tidy
