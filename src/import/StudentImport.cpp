#include "import/StudentImport.h"

#include <optional>

#include "import/TakenNumbers.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
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
    if (!m_intake.checkWorkbookOpen() || !library::hasRoomForBackup(m_library, backup))
        return ImportResult::Stopped;
    m_sheet = m_intake.openSheet(sheetName);
    if (m_sheet == nullptr)
        return ImportResult::Stopped;
    m_list.emplace(*m_sheet);
    if (!askAboutTaken())
        return ImportResult::Stopped;
    const library::BackupBeforeWrite copying(m_library, m_progress, backup,
                                             library::Occasion::studentImport());
    if (!writeRows())
        return ImportResult::Stopped;
    const size_t leftOut = m_list->rowsLeft().size();
    m_progress.finish();
    m_sheet = nullptr;
    m_intake.quitApplication();
    studentTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    if (leftOut > 0)
        runtime::MsgBox(
            u"第 %1 行的班级是空的，名单到此为止：从这一行起还有 %2 行有内容，没有导入。"_s
                .arg(m_list->end())
                .arg(leftOut));
    runtime::MsgBox(u"导入完成！"_s);
    return ImportResult::Finished;
}

bool StudentImport::askAboutTaken()
{
    m_taken = Taken::Add;
    std::optional<TakenCount> count;
    studentTrap([&] {
        const runtime::Phase phase;
        count.emplace(*m_sheet, m_library.Conn, StudentSheet::First, m_list->end());
    });
    if (!count || !count->isAnyTaken())
        return count.has_value();
    const runtime::Choice choice{
        .text = count->question(), .buttons = {u"跳过已有"_s, u"全部添加"_s, u"取消"_s}, .safe = 2};
    const int pressed = runtime::choose(choice);
    m_taken = pressed == 0 ? Taken::Skip : Taken::Add;
    return pressed != choice.safe;
}

void StudentImport::readHeadings()
{
    m_headings.clear();
    for (const StudentHeading& heading : m_list->headings()) {
        m_headings.push_back({{m_rows, heading.name}, heading.rule});
        if (heading.rule == CellRule::PassedOver)
            studentTrap.fail(passedOverText(heading.name));
    }
}

/// A refusal quotes the value first and gives the reason behind it. Photos are few, and each is
/// looked for by its name.
QString StudentImport::Heading::toldAs(const QString& refusal)
{
    if (rule == CellRule::Photo)
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
        const int end = m_list->end();
        for (int row = StudentSheet::First; row < end; ++row) {
            m_progress.report(TakingRows, row - StudentSheet::First, end - StudentSheet::First);
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
    if (heading.rule == CellRule::PassedOver)
        return;
    studentTrap([&] {
        refuseError(cell);
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
    if (heading.rule == CellRule::Photo)
        return storePhoto(heading, cell);
    // A heading that is no column fails here, with the engine's message.
    database::Field field = heading.field.in(m_rows);
    if (const std::optional<Value> value = studentValue(heading.rule, cell))
        field.setValue(*value);
}

void StudentImport::storePhoto(const Heading& heading, const Value& cell)
{
    const QString photo = photoFile(cell, m_intake.folder(), m_library.Conn.longestValue());
    if (photo.isEmpty())
        return;
    studentTrap([&] { m_library.SaveBin(photo, m_rows.Fields(u"照片"_s)); });
    heading.field.in(m_rows).setValue(library::ScoreLibrary::GetName(photo));
}

} // namespace importing
