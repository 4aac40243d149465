#include "import/tidy/Tidy.h"

#include <QFileInfo>

#include "import/tidy/BookReading.h"
#include "platform/runtime/Error.h"

namespace tidy {

using namespace Qt::StringLiterals;
using runtime::Value;

const QString LeftOutSheet = u"没有写入的行"_s;

namespace {

constexpr int fixedColumns = 3;

void writeHeadings(excel::Worksheet& sheet, const QStringList& headings)
{
    int column = 0;
    for (const QString& heading : headings)
        sheet.setCell(1, ++column, heading);
}

void writeSheet(excel::Worksheet& sheet, const ResultSheet& result, const BookReading& reading)
{
    writeHeadings(sheet, QStringList{u"班级"_s, u"学号"_s, u"姓名"_s} + result.columns);
    int row = 1;
    for (const ResultRow& student : result.rows) {
        ++row;
        sheet.setCell(row, 1, student.student->classNumber);
        sheet.setCell(row, 2, student.student->number);
        sheet.setCell(row, fixedColumns, student.student->name);
        int column = fixedColumns;
        for (const QString& name : result.columns)
            sheet.setCell(row, ++column, reading.cell(student, name));
    }
}

QString reasonOf(const StudentRow& student)
{
    QStringList texts;
    for (const Remark& remark : student.remarks)
        texts.append(remark.text);
    return texts.join(QString());
}

void writeLeftOut(excel::Workbook& target, const BookReading& reading, const Proposal& proposal)
{
    const std::vector<const StudentRow*> rows = reading.leftOut();
    if (rows.empty())
        return;
    excel::Worksheet& sheet = target.addSheet(LeftOutSheet);
    const QStringList headings{u"数据表"_s, u"行"_s, u"原因"_s, u"原来的内容"_s};
    writeHeadings(sheet, headings);
    int row = 1;
    for (const StudentRow* student : rows) {
        ++row;
        sheet.setCell(row, 1, proposal.sheets[size_t(student->source.sheet)].name);
        sheet.setCell(row, 2, student->source.row);
        sheet.setCell(row, fixedColumns, reasonOf(*student));
        for (const FilledCell& cell : reading.sourceCells(student->source))
            sheet.setCell(row, fixedColumns + cell.column, cell.value);
    }
}

} // namespace

std::vector<ColumnUse> possibleUses(Goal goal, const Roster& roster)
{
    std::vector<ColumnUse> uses;
    for (const Field field : {Field::Leave, Field::Class, Field::Number, Field::Name,
                              Field::ExamNumber, Field::SchoolNumber, Field::Stream})
        uses.push_back({field});
    if (goal == Goal::ExamScores) {
        for (const QString& subject : roster.subjects())
            uses.push_back({Field::Subject, subject});
        return uses;
    }
    for (const QString& column : Roster::studentColumns()) {
        if (column != fieldText(Field::SchoolNumber))
            uses.push_back({Field::StudentColumn, column});
    }
    return uses;
}

Proposal propose(excel::Workbook& book, Goal goal, const Sources& sources)
{
    Proposal proposal;
    proposal.goal = goal;
    proposal.fileName = QFileInfo(book.path()).completeBaseName();
    reconsider(proposal, book, sources);
    return proposal;
}

void reconsider(Proposal& proposal, excel::Workbook& book, const Sources& sources)
{
    const BookReading reading(book, proposal, sources);
}

std::unique_ptr<excel::Workbook> tidied(excel::Workbook& book, const Proposal& proposal,
                                        const Sources& sources)
{
    if (!proposal.isDecided())
        throw runtime::Error(proposal.questions.first());
    Proposal confirmed = proposal;
    const BookReading reading(book, confirmed, sources);
    auto target = std::make_unique<excel::Workbook>();
    for (const ResultSheet& result : reading.result())
        writeSheet(target->addSheet(result.name), result, reading);
    writeLeftOut(*target, reading, confirmed);
    return target;
}

} // namespace tidy
