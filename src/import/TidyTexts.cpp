#include "import/TidyTexts.h"

#include <algorithm>

#include "platform/runtime/Value.h"

namespace importing {

using namespace Qt::StringLiterals;
using tidy::ClassFrom;
using tidy::ClassSource;
using tidy::Field;
using tidy::Goal;
using tidy::MarkUse;
using tidy::Proposal;
using tidy::SheetProposal;
using tidy::Taking;

const std::vector<MarkUse> markUses{MarkUse::Absent, MarkUse::Cheated, MarkUse::AsItStands};

namespace {

constexpr int mostQuestionsShown = 3;
/// A title or a text of a cell is shown no longer than that.
constexpr int mostLetters = 40;

struct Reason
{
    QString text;
    int rows = 0;
};

/// How many rows each reason leaves out, in the order in which the reasons come up.
std::vector<Reason> reasonsOf(const Proposal& proposal)
{
    std::vector<Reason> reasons;
    for (const SheetProposal& sheet : proposal.sheets) {
        if (sheet.taking == Taking::LeaveOut)
            continue;
        for (const tidy::LeftOutRows& rows : sheet.leftOut) {
            auto known = std::find_if(reasons.begin(), reasons.end(), [&](const Reason& reason) {
                return reason.text == rows.reason;
            });
            if (known == reasons.end())
                known = reasons.insert(reasons.end(), {rows.reason});
            known->rows += rows.last - rows.first + 1;
        }
    }
    return reasons;
}

QString leftOutText(const Proposal& proposal)
{
    QStringList parts;
    for (const Reason& reason : reasonsOf(proposal))
        parts.append(u"%1 %2 行"_s.arg(reason.text).arg(reason.rows));
    return parts.isEmpty() ? QString() : u"不取："_s + parts.join(u"，"_s) + u"。"_s;
}

QStringList subjectsOf(const Proposal& proposal)
{
    QStringList subjects;
    for (const SheetProposal& sheet : proposal.sheets) {
        for (const tidy::ColumnProposal& column : sheet.columns) {
            if (sheet.taking == Taking::Take && column.use.field == Field::Subject
                && !subjects.contains(column.use.name))
                subjects.append(column.use.name);
        }
    }
    return subjects;
}

QString examText(const Proposal& proposal)
{
    const QStringList subjects = subjectsOf(proposal);
    QString text = subjects.isEmpty()
                       ? u"没有科目。"_s
                       : u"%1 科：%2。"_s.arg(subjects.size()).arg(subjects.join(u"、"_s));
    if (proposal.counts.absent > 0)
        text += u"缺考 %1 处。"_s.arg(proposal.counts.absent);
    if (proposal.counts.cheated > 0)
        text += u"作弊 %1 处。"_s.arg(proposal.counts.cheated);
    return text;
}

void addNote(grid::FlexGrid& grid, const QStringList& cells)
{
    const int row = grid.Rows();
    grid.setRows(row + 1);
    for (int col = 0; col < int(cells.size()); ++col)
        grid.setTextMatrix(row, col, cells[col]);
}

grid::FlexGrid emptyGrid(const QStringList& headings)
{
    constexpr int leftAligned = 1;
    grid::FlexGrid grid;
    grid.setRows(0);
    grid.setCols(int(headings.size()));
    grid.FixedCols = 0;
    grid.setColAlignment(-1, leftAligned);
    addNote(grid, headings);
    return grid;
}

/// A text of a sheet in a line of its own.
QString quoted(const QString& text)
{
    return text.isEmpty() ? u"（空白）"_s : text.left(mostLetters).simplified();
}

/// The texts of the rows above the headings.
QStringList titlesOf(const SheetProposal& sheet, const excel::Worksheet& worksheet)
{
    QStringList titles;
    for (const tidy::LeftOutRows& rows : sheet.leftOut) {
        if (rows.kind != tidy::RowKind::Title)
            continue;
        for (int row = rows.first; row <= rows.last; ++row) {
            for (const tidy::ColumnProposal& column : sheet.columns) {
                const QString text = worksheet.Cells(row, column.column).text();
                if (!text.isEmpty())
                    titles.append(text);
            }
        }
    }
    return titles;
}

} // namespace

QString countsText(const Proposal& proposal)
{
    const tidy::Counts& counts = proposal.counts;
    QString text = u"取 %1 张数据表的 %2 名学生"_s.arg(counts.sheets).arg(counts.students);
    QStringList parts;
    for (const auto& [caption, number] :
         {std::pair(u"班级和学号相符"_s, counts.known), std::pair(u"由其他栏找到"_s, counts.found),
          std::pair(u"成绩库里没有"_s, counts.unknown)}) {
        if (number > 0)
            parts.append(u"%1 %2 人"_s.arg(caption).arg(number));
    }
    text += parts.isEmpty() ? u"。"_s : u"："_s + parts.join(u"，"_s) + u"。"_s;
    if (counts.leftOut > 0)
        text += u"另有 %1 名学生认不出，没有取。"_s.arg(counts.leftOut);
    if (counts.nobody > 0)
        text += u"另有 %1，没有取。"_s.arg(tidy::nobodyText(proposal));
    if (proposal.goal == Goal::ExamScores)
        text += examText(proposal);
    return text + resultsText(proposal) + leftOutText(proposal);
}

QString questionsText(const Proposal& proposal)
{
    QStringList lines = proposal.questions.mid(0, mostQuestionsShown);
    const qsizetype more = proposal.questions.size() - lines.size();
    if (more > 0)
        lines.append(u"还有 %1 个问题，见“提示”。"_s.arg(more));
    return lines.join(u'\n');
}

QString sheetText(const SheetProposal& sheet)
{
    return sheet.taking == Taking::Take ? u"%1（%2 人）"_s.arg(sheet.name).arg(sheet.students)
                                        : u"%1（%2）"_s.arg(sheet.name, sheet.reason);
}

grid::FlexGrid notesGrid(const Proposal& proposal)
{
    grid::FlexGrid grid = emptyGrid({u"类别"_s, u"数据表"_s, u"行"_s, u"说明"_s});
    for (const QString& question : proposal.questions)
        addNote(grid, {u"请决定"_s, {}, {}, question});
    for (const QString& warning : proposal.warnings)
        addNote(grid, {u"注意"_s, {}, {}, warning});
    for (const tidy::Remark& remark : proposal.remarks)
        addNote(grid, {remark.isLeftOut ? u"没有取"_s : u"注意"_s, remark.sheet,
                       QString::number(remark.row), remark.text});
    if (proposal.remarksNotKept > 0)
        addNote(grid, {u"注意"_s, {}, {}, u"这样的行另有 %1 行。"_s.arg(proposal.remarksNotKept)});
    return grid;
}

grid::FlexGrid classesGrid(const Proposal& proposal)
{
    grid::FlexGrid grid = emptyGrid({u"原文"_s, u"人数"_s, u"班级"_s, u"说明"_s});
    for (const tidy::ClassReading& reading : proposal.classes)
        addNote(grid, {quoted(reading.text), QString::number(reading.rows),
                       reading.number ? runtime::Value(*reading.number).text() : QString(),
                       reading.reason});
    return grid;
}

grid::FlexGrid marksGrid(const Proposal& proposal)
{
    grid::FlexGrid grid = emptyGrid({u"原文"_s, u"次数"_s, u"作为"_s});
    for (const tidy::Mark& mark : proposal.marks)
        addNote(grid, {quoted(mark.text), QString::number(mark.count), markUseText(mark.use)});
    return grid;
}

std::vector<ClassSource> classSources(const Proposal& proposal, const SheetProposal& sheet,
                                      const excel::Worksheet& worksheet)
{
    std::vector<ClassSource> sources{{ClassFrom::Nowhere, QString()},
                                     {ClassFrom::Column, QString()}};
    const QStringList titles = titlesOf(sheet, worksheet);
    if (!titles.isEmpty())
        sources.push_back({ClassFrom::TitleRows, titles.join(u' ')});
    sources.push_back({ClassFrom::SheetName, sheet.name});
    if (!proposal.fileName.isEmpty())
        sources.push_back({ClassFrom::FileName, proposal.fileName});
    return sources;
}

QString classSourceText(const ClassSource& source)
{
    switch (source.from) {
    case ClassFrom::Column:
        return u"标为“班级”的列"_s;
    case ClassFrom::TitleRows:
        return u"标题“%1”"_s.arg(quoted(source.text));
    case ClassFrom::SheetName:
        return u"数据表名“%1”"_s.arg(source.text);
    case ClassFrom::FileName:
        return u"文件名“%1”"_s.arg(source.text);
    case ClassFrom::Nowhere:
        break;
    }
    return u"还没有来处"_s;
}

} // namespace importing
