#include "maintenance/TeacherList.h"

#include "maintenance/SchoolClasses.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap screenTrap{" - Private Sub Form_Load/FormJiaoShiMingDan"};
const Trap listTrap{" - Sub LoadJSMD/FormJiaoShiMingDan"};
const Trap saveTrap{" - Private Sub Command3_Click/FormJiaoShiMingDan"};

} // namespace

TeacherList::TeacherList(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary)
{
    teachers.setTextMatrix(0, 0, u"班级"_s);
}

void TeacherList::load()
{
    QStringList classes;
    screenTrap([&] { classes = classesOfStudents(m_library.Conn); });
    const QStringList& columns = m_library.catalogue.AllColumns;
    teachers.setRows(int(classes.size()) + 1);
    teachers.setCols(int(columns.size()) + 1);
    for (int row = 1; row < teachers.Rows(); ++row)
        teachers.setTextMatrix(row, 0, classes[row - 1]);
    for (int col = 1; col < teachers.Cols(); ++col)
        teachers.setTextMatrix(0, col, columns[col - 1]);
    teachers.setColWidth(-1, 900);
    m_stored = m_shown = texts();
}

void TeacherList::show(const QString& exam)
{
    m_exam = exam;
    LoadJSMD(exam);
    m_stored = m_shown = texts();
}

void TeacherList::copyFrom(const QString& exam)
{
    LoadJSMD(exam);
    m_shown = texts();
}

int TeacherList::GetBJRow(const QString& classNumber) const
{
    int row = teachers.Rows() - 1;
    while (row > 0 && teachers.TextMatrix(row, 0) != classNumber)
        --row;
    return row;
}

void TeacherList::LoadJSMD(const QString& exam)
{
    for (int row = 1; row < teachers.Rows(); ++row) {
        for (int col = 1; col < teachers.Cols(); ++col)
            teachers.setTextMatrix(row, col, QString());
    }
    m_isRead = listTrap([&] {
        const runtime::Phase phase;
        const database::ReadBatch reading(m_library.Conn);
        database::Recordset rows;
        rows.Open(u"select * from 教师表 where 考试名称=? order by 班级"_s, {exam}, m_library.Conn);
        for (; !rows.Eof(); rows.MoveNext()) {
            const int row = GetBJRow(rows.Fields(u"班级"_s).Value().text());
            if (row > 0)
                fillRow(rows, row);
        }
    });
}

void TeacherList::fillRow(database::Recordset& rows, int row)
{
    for (int col = 1; col < teachers.Cols(); ++col) {
        listTrap([&] {
            teachers.setTextMatrix(row, col,
                                   rows.Fields(teachers.TextMatrix(0, col)).Value().text());
        });
    }
}

bool TeacherList::save()
{
    if (m_exam.isEmpty()) {
        runtime::warn(u"成绩库里还没有考试，教师名单没有保存。"_s);
        return false;
    }
    // The empty cells would take the place of names that nobody saw.
    if (!m_isRead) {
        runtime::warn(u"教师名单没有读出来，没有保存。请重新选择考试。"_s);
        return false;
    }
    bool isRefused = teachers.Rows() > 1;
    const bool isDone = saveTrap([&] {
        database::WriteBatch batch(m_library.Conn);
        for (int row = 1; row < teachers.Rows(); ++row) {
            if (saveTrap([&] { saveRow(row); }))
                isRefused = false;
        }
        batch.commit();
    });
    if (!isDone || isRefused)
        return false;
    m_stored = m_shown = texts();
    return true;
}

void TeacherList::saveRow(int row)
{
    const double number = classNumber(teachers.TextMatrix(row, 0));
    database::Recordset rows;
    rows.Open(u"select * from 教师表 where 考试名称=? and 班级=?"_s, {m_exam, number},
              m_library.Conn);
    if (rows.RecordCount() == 0) {
        rows.AddNew();
        rows.Fields(u"考试名称"_s).setValue(m_exam);
        rows.Fields(u"班级"_s).setValue(number);
    }
    for (int col = 1; col < teachers.Cols(); ++col) {
        saveTrap([&] {
            rows.Fields(teachers.TextMatrix(0, col)).setValue(teachers.TextMatrix(row, col));
        });
    }
    rows.Update();
}

QList<QStringList> TeacherList::texts() const
{
    QList<QStringList> cells;
    for (int row = 1; row < teachers.Rows(); ++row) {
        QStringList& names = cells.emplaceBack();
        for (int col = 1; col < teachers.Cols(); ++col)
            names.append(teachers.TextMatrix(row, col));
    }
    return cells;
}

} // namespace maintenance
