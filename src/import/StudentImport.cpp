#include "import/StudentImport.h"

#include <algorithm>
#include <optional>

#include <QFileInfo>

#include "import/CellDate.h"
#include "import/TakenNumbers.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Value;

namespace {

const Trap studentTrap{" - Private Sub Command1_Click/FormDaoRuXinXi"};

} // namespace

StudentImport::StudentImport(library::ScoreLibrary& scoreLibrary, WorkbookIntake& intake,
                             runtime::Progress& progress)
    : m_library(scoreLibrary), m_intake(intake), m_progress(progress)
{
}

ImportResult StudentImport::run(const QString& sheetName, Backup backup)
{
    if (!m_intake.checkWorkbookOpen())
        return ImportResult::Stopped;
    m_sheet = m_intake.openSheet(sheetName);
    if (m_sheet == nullptr)
        return ImportResult::Stopped;
    m_end = endOfList();
    if (!askAboutTaken())
        return ImportResult::Stopped;
    const library::BackupBeforeWrite copying(m_library, m_progress, backup,
                                             library::Occasion::studentImport());
    if (!writeRows())
        return ImportResult::Stopped;
    const int leftOut = rowsBelowTheEnd();
    m_progress.finish();
    m_sheet = nullptr;
    m_intake.quitApplication();
    studentTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    if (leftOut > 0)
        runtime::MsgBox(
            u"第 %1 行的班级是空的，名单到此为止：从这一行起还有 %2 行有内容，没有导入。"_s
                .arg(m_end)
                .arg(leftOut));
    runtime::MsgBox(u"导入完成！"_s);
    return ImportResult::Finished;
}

int StudentImport::endOfList() const
{
    const int lastRow = m_sheet->lastUsedRow();
    int row = FirstRow;
    while (row <= lastRow && !isEmptyCell(m_sheet->Cells(row, 1)))
        ++row;
    return row;
}

int StudentImport::rowsBelowTheEnd() const
{
    int rows = 0;
    for (int row = m_end; row <= m_sheet->lastUsedRow(); ++row) {
        int column = 1;
        rows += std::any_of(m_headings.begin(), m_headings.end(), [&](const Heading&) {
            return !isEmptyCell(m_sheet->Cells(row, column++));
        });
    }
    return rows;
}

bool StudentImport::askAboutTaken()
{
    m_taken = Taken::Add;
    std::optional<TakenCount> count;
    studentTrap([&] {
        const runtime::Phase phase;
        count.emplace(*m_sheet, m_library.Conn, FirstRow, m_end);
    });
    if (!count || !count->isAnyTaken())
        return count.has_value();
    const runtime::Choice choice{
        .text = count->question(), .buttons = {u"跳过已有"_s, u"全部添加"_s, u"取消"_s}, .safe = 2};
    const int pressed = runtime::choose(choice);
    m_taken = pressed == 0 ? Taken::Skip : Taken::Add;
    return pressed != choice.safe;
}

StudentImport::Rule StudentImport::ruleOf(const QString& heading)
{
    if (heading.compare("ID"_L1, Qt::CaseInsensitive) == 0)
        return Rule::PassedOver;
    if (heading == u"类别代码"_s || heading == u"班级"_s || heading == u"学号"_s)
        return Rule::Number;
    if (heading == u"出生时间"_s || heading == u"入学时间"_s)
        return Rule::Date;
    return heading == u"照片名"_s ? Rule::Photo : Rule::AsItStands;
}

void StudentImport::readHeadings()
{
    m_headings.clear();
    for (int column = 1; column <= LastColumn; ++column) {
        const Value& cell = m_sheet->Cells(1, column);
        if (isEmptyCell(cell))
            return;
        const Heading& heading =
            m_headings.emplace_back(Heading{{m_rows, cell.text()}, ruleOf(cell.text())});
        if (heading.rule == Rule::PassedOver)
            studentTrap.fail(
                u"“%1”是成绩库给学生编的号，不能由名单规定，名单里的这一列没有导入。"_s.arg(
                    heading.field.name()));
    }
}

/// A refusal quotes the value first and gives the reason behind it. Photos are few, and each is
/// looked for by its name.
QString StudentImport::Heading::toldAs(const QString& refusal)
{
    if (rule == Rule::Photo)
        return refusal;
    const QString reason = refusal.mid(refusal.lastIndexOf(u'”') + 1);
    QString& told = refusals[reason];
    if (told.isEmpty())
        told = refusal;
    return told;
}

bool StudentImport::writeRows()
{
    bool complete = false;
    studentTrap([&] {
        database::WriteBatch batch(m_library.Conn);
        m_rows.Open(u"select * from 信息表"_s, m_library.Conn);
        readHeadings();
        TakenNumbers numbers(*m_sheet, m_library.Conn);
        for (int row = FirstRow; row < m_end; ++row) {
            m_progress.report(TakingRows, row - FirstRow, m_end - FirstRow);
            if (m_progress.cancelled())
                return;
            if (m_taken == Taken::Add || numbers.takenBy(row) == TakenNumbers::TakenBy::Nobody)
                writeStudent(row);
        }
        batch.commit();
        complete = true;
    });
    m_rows.Close();
    return complete;
}

void StudentImport::writeStudent(int row)
{
    studentTrap([&] { m_rows.AddNew(); });
    int column = 1;
    for (Heading& heading : m_headings)
        storeCell(heading, m_sheet->Cells(row, column++));
    studentTrap([&] {
        database::Field stream = m_rows.Fields(u"科类"_s);
        if (stream.Value().isNull())
            stream.setValue(u"理"_s);
    });
    studentTrap([&] { m_rows.Update(); });
}

/// Thousands of cells of a column can be refused, each for a value of its own. Those of one reason
/// are told in the words of the first, so that they fold into one message.
void StudentImport::storeCell(Heading& heading, const Value& cell)
{
    if (heading.rule == Rule::PassedOver)
        return;
    studentTrap([&] {
        if (cell.kind() == Value::Kind::Error)
            throw runtime::Error(errorCellText(cell));
        try {
            store(heading, cell);
        } catch (const runtime::PhaseError&) {
            throw;
        } catch (const runtime::Error& error) {
            throw runtime::Error(heading.toldAs(error.description()));
        }
    });
}

void StudentImport::store(const Heading& heading, const Value& cell)
{
    if (heading.rule == Rule::Photo)
        return storePhoto(heading, cell.text());
    // A heading that is no column fails here, with the engine's message.
    database::Field field = heading.field.in(m_rows);
    if (heading.rule == Rule::Number)
        field.setValue(runtime::Val(cell));
    else if (heading.rule == Rule::Date)
        storeDate(field, cell);
    else
        field.setValue(cell);
}

void StudentImport::storeDate(database::Field& field, const Value& cell)
{
    if (isEmptyCell(cell))
        return;
    const std::optional<QDateTime> date = cellDate(cell);
    if (!date)
        throw runtime::Error(u"“%1”不是日期。"_s.arg(cell.text()));
    field.setValue(Value(*date).text());
}

void StudentImport::storePhoto(const Heading& heading, const QString& cell)
{
    const QString path = QString(cell).replace(u'\\', u'/');
    QString photo = path;
    if (!QFileInfo(photo).isFile())
        photo = m_intake.folder() + path;
    if (!QFileInfo(photo).isFile())
        return;
    const qint64 largest = m_library.Conn.longestValue();
    if (QFileInfo(photo).size() > largest)
        throw runtime::Error(
            u"照片“%1”太大，没有存入；最大 %2 MB。"_s.arg(cell).arg(largest / 1'000'000));
    studentTrap([&] { m_library.SaveBin(photo, m_rows.Fields(u"照片"_s)); });
    heading.field.in(m_rows).setValue(library::ScoreLibrary::GetName(photo));
}

} // namespace importing
