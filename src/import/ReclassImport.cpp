#include "import/ReclassImport.h"

#include "import/ClassChangeWriter.h"
#include "import/StudentMatch.h"
#include "platform/database/Recordset.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::doubleText;
using runtime::Trap;
using runtime::Value;
using Effect = ClassChange::Effect;
using Found = ClassChange::Found;

namespace {

const Trap reclassTrap{" - Private Sub Command1_Click/FormDaoRuFenBanXinXi"};
const QString Reclassing = u"开始分班..."_s;
constexpr int FirstStudentRow = 2;

/// 分班表 while it is filled.
class TableFiller
{
public:
    /// Empties it. Throws Error.
    explicit TableFiller(database::Connection& connection)
    {
        connection.Execute(u"delete * from 分班表"_s);
        m_rows.Open(u"select * from 分班表"_s, connection);
        for (const QString& column : {u"班级"_s, u"学号"_s, u"姓名"_s, u"新班级"_s, u"新学号"_s})
            m_fields.emplace_back(m_rows, column);
    }

    void add(const excel::Worksheet& sheet, int row)
    {
        reclassTrap([&] { m_rows.AddNew(); });
        int column = 0;
        for (const database::FieldByName& field : m_fields) {
            ++column;
            reclassTrap([&] { set(field, sheet.Cells(row, column)); });
        }
        reclassTrap([&] { m_rows.Fields(u"已分班"_s).setValue(0); });
        reclassTrap([&] { m_rows.Update(); });
    }

private:
    void set(const database::FieldByName& field, const Value& cell)
    {
        if (cell.kind() == Value::Kind::Error)
            throw runtime::Error(errorCellText(cell));
        field.in(m_rows).setValue(field.name() == u"姓名"_s ? cell : Value(runtime::Val(cell)));
    }

    database::Recordset m_rows;
    std::vector<database::FieldByName> m_fields;
};

QString missingText(const ClassChange& student)
{
    return u"分班表中没有下列学生的信息： ["_s + doubleText(student.classNumber) + u" 班 "_s
           + doubleText(student.number) + u" 号 "_s + student.name
           + u"] ，是否从数据库中删除当前学生记录！"_s;
}

} // namespace

ReclassImport::ReclassImport(library::ScoreLibrary& scoreLibrary, WorkbookIntake& intake,
                             runtime::Progress& progress)
    : m_library(scoreLibrary), m_intake(intake), m_progress(progress)
{
}

ImportResult ReclassImport::run(const QString& sheetName, Backup backup)
{
    if (!m_intake.checkWorkbookOpen() || !library::hasRoomForBackup(m_library, backup))
        return ImportResult::Stopped;
    const excel::Worksheet* sheet = m_intake.openSheet(sheetName);
    if (sheet == nullptr)
        return ImportResult::Stopped;
    const library::BackupBeforeWrite copying(m_library, m_progress, backup, {u"重新分班"_s});
    const bool isFilled = fillTable(*sheet);
    m_progress.finish();
    if (!isFilled || !mayGoOn())
        return ImportResult::Stopped;
    settle();
    if (!writeChanges())
        return ImportResult::Stopped;
    finish();
    return ImportResult::Finished;
}

/// What the table says is read in the transaction that fills it.
bool ReclassImport::fillTable(const excel::Worksheet& sheet)
{
    m_changes.reset();
    reclassTrap([&] {
        database::WriteBatch batch(m_library.Conn);
        if (!writeRows(sheet))
            return;
        ClassChanges changes(m_library.Conn);
        m_dataVersion = m_library.Conn.dataVersion();
        batch.commit();
        m_changes = std::move(changes);
    });
    return m_changes.has_value();
}

bool ReclassImport::writeRows(const excel::Worksheet& sheet)
{
    TableFiller table(m_library.Conn);
    const int lastRow = sheet.lastUsedRow();
    for (int row = FirstStudentRow; row <= lastRow; ++row) {
        m_progress.report(Reclassing, row - FirstStudentRow, lastRow - FirstStudentRow + 1);
        if (m_progress.cancelled())
            return false;
        if (!isEmptyCell(sheet.Cells(row, 1)))
            table.add(sheet, row);
    }
    return true;
}

bool ReclassImport::mayGoOn() const
{
    const runtime::Choice choice{.text = m_changes->counts.question(),
                                 .buttons = {u"继续"_s, u"取消"_s},
                                 .safe = 1,
                                 .title = u"提示"_s};
    return runtime::choose(choice) != choice.safe;
}

void ReclassImport::settle()
{
    m_missing.reset();
    m_otherNames.reset();
    m_removed.clear();
    for (ClassChange& student : m_changes->students) {
        if (m_removed.contains(student.id))
            continue;
        student.effect = effectOf(student);
        if (student.effect == Effect::Remove)
            m_removed.insert(student.id);
    }
}

Effect ReclassImport::effectOf(const ClassChange& student)
{
    switch (student.found) {
    case Found::SameName:
        return Effect::Move;
    case Found::OtherName: {
        const QString text = nameMismatchText(student.classNumber, student.number,
                                              student.newName.text(), student.name);
        const Answer answer = ask(text, runtime::Buttons::YesNoCancel, m_otherNames);
        return answer == Answer::Yes ? Effect::Rename : Effect::None;
    }
    case Found::Nowhere: {
        const Answer answer = ask(missingText(student), runtime::Buttons::OkCancel, m_missing);
        return answer == Answer::Ok ? Effect::Remove : Effect::None;
    }
    case Found::WithoutNumber:
        reclassTrap.fail(u"“%1”在成绩库中没有班级或学号，不能分班。"_s.arg(student.name));
        break;
    case Found::WithoutPlace:
        break;
    }
    return Effect::None;
}

Answer ReclassImport::ask(const QString& text, runtime::Buttons buttons, Standing& standing)
{
    if (standing)
        return *standing;
    const runtime::StandingAnswer given = runtime::MsgBoxOfMany(text, u"数据错误"_s, buttons);
    if (given.forRest)
        standing = given.answer;
    return given.answer;
}

bool ReclassImport::writeChanges()
{
    bool complete = false;
    reclassTrap([&] {
        database::WriteBatch batch(m_library.Conn);
        if (m_library.Conn.dataVersion() != m_dataVersion)
            throw runtime::PhaseError(
                u"回答问题期间，别的程序改动了成绩库，学生和成绩都没有写入。请重新分班。"_s);
        ClassChangeWriter writer(m_library.Conn, reclassTrap);
        writeStudents(writer);
        if (m_progress.cancelled())
            return;
        batch.commit();
        complete = true;
        m_summary = u"移动 %1 人，改名 %2 人，删除 %3 人（成绩 %4 条），留在原班 %5 人。"_s
                        .arg(writer.moved())
                        .arg(writer.renamed())
                        .arg(writer.removed())
                        .arg(writer.removedScores())
                        .arg(int(m_changes->students.size()) - writer.moved() - writer.removed());
    });
    return complete;
}

void ReclassImport::writeStudents(ClassChangeWriter& writer)
{
    const int total = int(m_changes->students.size());
    int done = 0;
    for (const ClassChange& student : m_changes->students) {
        m_progress.report(Reclassing, done++, total);
        if (m_progress.cancelled())
            return;
        writer.write(student);
    }
}

void ReclassImport::finish()
{
    m_progress.finish();
    reclassTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    runtime::MsgBox(m_summary);
    runtime::MsgBox(u"分班完成！"_s);
}

} // namespace importing
