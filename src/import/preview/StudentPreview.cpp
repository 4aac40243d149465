#include "import/preview/StudentPreview.h"

#include <set>

#include "import/SheetRows.h"
#include "import/StudentSheet.h"
#include "import/TakenNumbers.h"
#include "import/preview/ColumnFit.h"
#include "import/preview/ListStreams.h"
#include "import/preview/RowsByNumber.h"
#include "import/preview/SheetEntry.h"
#include "platform/database/ReadBatch.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/PlainNumber.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

/// A text that is stored as a number although it is none.
bool isReadAsNumber(const Value& cell)
{
    if (cell.kind() != Value::Kind::Text || isEmptyCell(cell))
        return false;
    const QString text = cell.text();
    return !runtime::plainNumber(
        std::u16string_view(QStringView(text).utf16(), size_t(text.size())));
}

QString takenRemark(TakenStudents taken)
{
    switch (taken) {
    case TakenStudents::Skip:
        return u"成绩库里已有这个班级和学号，会跳过。"_s;
    case TakenStudents::Add:
        return u"成绩库里已有这个班级和学号，会再添加一条。成绩库里的那一条不会改。"_s;
    case TakenStudents::Cancel:
        return u"成绩库里已有这个班级和学号，导入会停下。"_s;
    case TakenStudents::Ask:
        break;
    }
    return u"成绩库里已有这个班级和学号，导入时会询问：跳过，或者再添加一条。"
           "成绩库里的那一条不会改。"_s;
}

QString takenWarning(TakenStudents taken)
{
    switch (taken) {
    case TakenStudents::Skip:
        return u"他们会跳过。"_s;
    case TakenStudents::Add:
        return u"会全部添加，他们就会有两条以上的记录。"_s;
    case TakenStudents::Cancel:
        return u"导入会停下，什么也不存入。"_s;
    case TakenStudents::Ask:
        break;
    }
    return u"导入时会询问；如果选“全部添加”，他们就会有两条以上的记录。"_s;
}

/// What becomes of rows of one class and number, which the library has too or not.
QString twiceRemark(TakenStudents taken, bool isInLibrary)
{
    switch (taken) {
    case TakenStudents::Skip:
        return isInLibrary ? u"，成绩库里也已经有了，都会跳过。"_s : u"，只取最前面的一行。"_s;
    case TakenStudents::Add:
        return isInLibrary ? u"，成绩库里也已经有了，会全部添加。"_s : u"，会全部添加。"_s;
    case TakenStudents::Cancel:
        return isInLibrary ? u"，成绩库里也已经有了，导入会停下。"_s : u"，导入会停下。"_s;
    case TakenStudents::Ask:
        break;
    }
    return isInLibrary ? u"，成绩库里也已经有了；导入时会询问：都跳过，或者全部添加。"_s
                       : u"；导入时会询问：只取最前面的一行，或者全部添加。"_s;
}

/// Goes through a student list as the import does, and notes what it finds.
class ListPreviewer
{
public:
    ListPreviewer(library::ScoreLibrary& scoreLibrary, const excel::Worksheet& sheet,
                  QString folder, TakenStudents answer);

    Preview run();

private:
    /// A column of the sheet and the one of 信息表 that it goes to.
    struct Column
    {
        StudentHeading heading;
        int sheetColumn = 0;
        const database::Column* target = nullptr;
    };

    void takeColumns();
    void takeRow(int row);
    void takeTaken(int row);
    void takeStream(int row, bool isTaken);
    std::optional<Value> judgeCell(int row, const Column& column);
    ColumnFit fitOf(const Column& column, const Value& cell) const;
    void tellTwice();
    void tellTaken();
    void tellStreams();

    library::ScoreLibrary& m_library;
    const excel::Worksheet& m_sheet;
    const QString m_folder;
    const TakenStudents m_answer;
    const StudentSheet m_list;
    /// The import ends before its first row.
    const bool m_isStopped;
    TakenNumbers m_taken;
    KnownStudents m_students;
    std::vector<Column> m_columns;
    RowsByNumber m_rowsOf;
    /// Those of the list that the library has already.
    std::set<RowsByNumber::Number> m_inLibrary;
    ListStreams m_streams;
    int m_withoutStream = 0;
    /// Of those rows that are skipped unless all are added.
    int m_takenWithoutStream = 0;
    Preview m_preview;
};

ListPreviewer::ListPreviewer(library::ScoreLibrary& scoreLibrary, const excel::Worksheet& sheet,
                             QString folder, TakenStudents answer)
    : m_library(scoreLibrary),
      m_sheet(sheet),
      m_folder(std::move(folder)),
      m_answer(answer),
      m_list(sheet),
      m_isStopped(
          answer == TakenStudents::Cancel
          && TakenCount(sheet, scoreLibrary.Conn, StudentSheet::First, m_list.end()).isAnyTaken()),
      m_taken(sheet, scoreLibrary.Conn),
      m_students(scoreLibrary.Conn),
      m_streams(scoreLibrary.Conn)
{
}

Preview ListPreviewer::run()
{
    m_preview.title = u"学生名单，数据表“%1”"_s.arg(m_sheet.Name());
    m_preview.rows = m_list.end() - StudentSheet::First;
    takeColumns();
    for (int row = StudentSheet::First; row < m_list.end(); ++row)
        takeRow(row);
    tellTaken();
    tellTwice();
    tellStreams();
    tellRowsLeft(m_sheet, m_list.rowsLeft(),
                 u"第 %1 行的班级是空的，名单到此为止。"_s.arg(m_list.end()), m_preview);
    return std::move(m_preview);
}

void ListPreviewer::takeColumns()
{
    const database::TableColumns& known = m_library.Conn.columns(u"信息表"_s);
    int sheetColumn = 0;
    for (const StudentHeading& heading : m_list.headings()) {
        const int position = known.find(heading.name);
        Column column{heading, ++sheetColumn, position < 0 ? nullptr : &known.at(position)};
        QString why;
        if (heading.rule == CellRule::PassedOver)
            why = passedOverText(heading.name);
        else if (column.target == nullptr)
            why =
                u"成绩库的名单里没有“%1”这一项，导入时会提示，这一列不会存入。"_s.arg(heading.name);
        if (why.isEmpty())
            m_columns.push_back(column);
        else
            m_preview.add({PreviewKind::Column, 1, {}, {}, {}, heading.name, {}, {}, why});
    }
}

void ListPreviewer::takeRow(int row)
{
    const TakenNumbers::TakenBy taken = m_taken.takenBy(row);
    if (taken == TakenNumbers::TakenBy::Library)
        takeTaken(row);
    if (const auto number = TakenNumbers::numberOn(m_sheet, row))
        m_rowsOf.add(*number, row);
    if (taken == TakenNumbers::TakenBy::Nobody && !m_isStopped)
        m_preview.add(sheetEntry(PreviewKind::NewStudent, m_sheet, row, u"会添加到成绩库。"_s));
    takeStream(row, taken != TakenNumbers::TakenBy::Nobody);
}

void ListPreviewer::takeTaken(int row)
{
    const SheetStudent student = studentIn(m_sheet, row);
    const KnownStudents::Student* known = m_students.find(student.classNumber, student.number);
    const bool isOther = known != nullptr && known->name != student.name;
    m_inLibrary.emplace(student.classNumber, student.number);
    PreviewEntry entry = sheetEntry(isOther ? PreviewKind::OtherName : PreviewKind::TakenNumber,
                                    m_sheet, row, takenRemark(m_answer));
    if (isOther) {
        entry.before = known->name;
        entry.after = student.name;
    } else {
        ++m_preview.matched;
    }
    m_preview.add(std::move(entry));
}

/// Judges the cells of a row; its stream counts if the row is added.
void ListPreviewer::takeStream(int row, bool isTaken)
{
    Value stream;
    QString cell;
    for (const Column& column : m_columns) {
        const std::optional<Value> stored = judgeCell(row, column);
        if (column.heading.name != u"科类"_s)
            continue;
        cell = m_sheet.Cells(row, column.sheetColumn).text();
        stream = stored.value_or(stream);
    }
    if (m_isStopped || (isTaken && m_answer == TakenStudents::Skip))
        return;
    const bool isAsked = isTaken && m_answer == TakenStudents::Ask;
    if (stream.isNull())
        ++(isAsked ? m_takenWithoutStream : m_withoutStream);
    m_streams.add(row, isAsked ? ListStreams::RowIs::Asked : ListStreams::RowIs::Added, cell,
                  stream.isNull() ? u"理"_s : stream.text());
}

/// What would be stored of the cell; nothing if it is refused.
std::optional<Value> ListPreviewer::judgeCell(int row, const Column& column)
{
    const Value cell = m_sheet.Cells(row, column.sheetColumn);
    ColumnFit fit = fitOf(column, cell);
    const bool isText = column.heading.rule == CellRule::Number && isReadAsNumber(cell);
    if (fit.refusal.isEmpty() && !isText)
        return std::move(fit.stored);
    PreviewEntry entry =
        sheetEntry(fit.refusal.isEmpty() ? PreviewKind::TextCell : PreviewKind::BadCell, m_sheet,
                   row, fit.refusal.isEmpty() ? u"不是数字，按这个数存入。"_s : fit.refusal);
    entry.subject = column.heading.name;
    entry.before = cell.text();
    if (fit.refusal.isEmpty())
        entry.after = runtime::doubleText(runtime::Val(cell));
    m_preview.add(std::move(entry));
    return fit.refusal.isEmpty() ? std::optional(std::move(fit.stored)) : std::nullopt;
}

ColumnFit ListPreviewer::fitOf(const Column& column, const Value& cell) const
{
    try {
        refuseError(cell);
        if (column.heading.rule == CellRule::Photo) {
            const QString photo = photoFile(cell, m_folder, m_library.Conn.longestValue());
            return {{},
                    photo.isEmpty() && !isEmptyCell(cell) ? u"找不到这个照片文件，不会有照片。"_s
                                                          : QString()};
        }
        const std::optional<Value> value = studentValue(column.heading.rule, cell);
        return value ? fitInto(*column.target, *value) : ColumnFit();
    } catch (const runtime::Error& error) {
        return {{}, error.description()};
    }
}

void ListPreviewer::tellTwice()
{
    m_rowsOf.tellTwice(
        m_sheet,
        [this](const RowsByNumber::Number& number) {
            return twiceRemark(m_answer, m_inLibrary.contains(number));
        },
        m_preview);
}

void ListPreviewer::tellTaken()
{
    if (!m_inLibrary.empty())
        m_preview.warning =
            u"名单里有 %1 人的班级和学号成绩库里已经有了！"_s.arg(m_inLibrary.size())
            + takenWarning(m_answer);
    else if (m_isStopped)
        m_preview.warning = u"名单里有几行的班级和学号相同！"_s + takenWarning(m_answer);
}

void ListPreviewer::tellStreams()
{
    if (m_withoutStream > 0)
        m_preview.notes.append(u"%1 人没有科类，会设为“理”。"_s.arg(m_withoutStream));
    if (m_takenWithoutStream > 0)
        m_preview.notes.append(
            u"选“全部添加”时，还有 %1 行没有科类，也会设为“理”。"_s.arg(m_takenWithoutStream));
    m_streams.tell(m_sheet, m_preview);
}

} // namespace

std::optional<Preview> previewStudents(library::ScoreLibrary& scoreLibrary,
                                       const WorkbookIntake& intake, const QString& sheetName,
                                       TakenStudents taken)
{
    if (!intake.checkWorkbookOpen())
        return std::nullopt;
    const excel::Worksheet* sheet = intake.openSheet(sheetName);
    if (sheet == nullptr)
        return std::nullopt;
    const runtime::Phase phase;
    const database::ReadBatch state(scoreLibrary.Conn);
    return ListPreviewer(scoreLibrary, *sheet, intake.folder(), taken).run();
}

} // namespace importing
