#include "configuration/SubjectConditions.h"

#include "configuration/AnalysisSettings.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/WriteBatch.h"
#include "platform/grid/GridText.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/Trap.h"

namespace configuration {

using namespace Qt::StringLiterals;
using database::Recordset;
using runtime::doubleText;
using runtime::Trap;

namespace {

constexpr int conditionColumns = 6;
const QString captionHead = u"设置  "_s;
constexpr double usualFullMarks = 100;

const QString storedStatement = u"select * from 详细设置表 where 设置名称=?"_s;

const Trap makingRows{" - Sub SzGekE/FormSet"};
const Trap savingConditions{" - Private Sub Command1_Click/FormXiangXiSZ"};
const Trap deleting{" - Private Sub Command3_Click/FormXiangXiSZ"};

} // namespace

SubjectConditions::SubjectConditions(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary)
{
    conditions.FixedCols = FirstOperatorCol;
    conditions.setCols(conditionColumns);
    conditions.setRows(1);
    conditions.setColAlignment(-1, 1);
    setRow(0, {u"科类"_s, u"科目"_s, u"条件"_s, u"分数"_s, u"条件"_s, u"分数"_s});
    m_unchanged = grid::gridText(conditions);
}

QString SubjectConditions::captionOf(const QString& name)
{
    return captionHead + name;
}

QString SubjectConditions::nameIn(const QString& caption)
{
    return caption.mid(captionHead.size());
}

const QStringList& SubjectConditions::operators()
{
    static const QStringList all{u">"_s, u">="_s, u"<"_s, u"<="_s};
    return all;
}

void SubjectConditions::setRow(int row, const QStringList& cells)
{
    for (int col = 0; col < conditionColumns; ++col)
        conditions.setTextMatrix(row, col, cells[col]);
}

int SubjectConditions::storedCount(const QString& name) const
{
    int count = 0;
    makingRows([&] {
        Recordset rows;
        rows.Open(storedStatement, {name}, m_library.Conn);
        count = int(rows.RecordCount());
    });
    return count;
}

void SubjectConditions::loadStored(const QString& name)
{
    SetRow = 0;
    read([&] {
        Recordset rows;
        rows.Open(storedStatement, {name}, m_library.Conn);
        conditions.setRows(int(rows.RecordCount()) + 1);
        for (int row = 1; row < conditions.Rows(); ++row) {
            for (int col = 0; col < conditionColumns; ++col)
                makingRows([&] {
                    conditions.setTextMatrix(row, col, rows.Fields(col + 1).Value().text());
                });
            rows.MoveNext();
        }
    });
}

void SubjectConditions::makeFrom(const statistics::Interval& interval)
{
    const library::Catalogue& catalogue = m_library.catalogue;
    conditions.setRows(int(catalogue.Streams.size() * catalogue.SubjectColumns.size()) + 1);
    read([&] {
        for (int stream = 0; stream < catalogue.Streams.size(); ++stream)
            makeStream(stream, interval);
    });
}

/// From one state of the file. Rows that were read in part would take the place of whole ones.
void SubjectConditions::read(const std::function<void()>& fill)
{
    m_isRead = makingRows([&] {
        const runtime::Phase phase;
        const database::ReadBatch reading(m_library.Conn);
        fill();
    });
    if (!m_isRead)
        conditions.setRows(1);
    m_unchanged = grid::gridText(conditions);
}

void SubjectConditions::makeStream(int stream, const statistics::Interval& interval)
{
    const QStringList& subjects = m_library.catalogue.SubjectColumns;
    const QString& name = m_library.catalogue.Streams[stream];
    Recordset exams;
    bool hasExam = false;
    makingRows([&] {
        exams.Open(u"select * from  考试名称表 where 科类=? order by 考试编号 desc"_s, {name},
                   m_library.Conn);
        hasExam = exams.RecordCount() > 0;
    });
    double full = usualFullMarks;
    for (int j = 0; j < subjects.size(); ++j) {
        if (hasExam)
            makingRows([&] { full = runtime::Val(exams.Fields(subjects[j]).Value().text()); });
        if (full == 0)
            full = usualFullMarks;
        setRow(stream * int(subjects.size()) + j + 1,
               {name, subjects[j], interval.lowerOperator, doubleText(interval.lower * full),
                interval.upperOperator, doubleText(interval.upper * full)});
    }
}

int SubjectConditions::rowOf(const QString& stream, const QString& subject) const
{
    for (int row = 1; row < conditions.Rows(); ++row) {
        if (conditions.TextMatrix(row, StreamCol) == stream
            && conditions.TextMatrix(row, SubjectCol) == subject)
            return row;
    }
    return -1;
}

bool SubjectConditions::isChanged() const
{
    return grid::gridText(conditions) != m_unchanged;
}

/// False, after a message, if the row has no place in the table.
bool SubjectConditions::saveRow(const QString& name, int row)
{
    return savingConditions([&] {
        Recordset rows;
        rows.Open(
            u"select * from 详细设置表 where 设置名称=? and 科类=? and 科目=?"_s,
            {name, conditions.TextMatrix(row, StreamCol), conditions.TextMatrix(row, SubjectCol)},
            m_library.Conn);
        if (rows.RecordCount() == 0)
            rows.AddNew();
        savingConditions([&] { rows.Fields(0).setValue(name); });
        for (int col = 0; col < conditionColumns; ++col)
            savingConditions(
                [&] { rows.Fields(col + 1).setValue(conditions.TextMatrix(row, col)); });
        rows.Update();
    });
}

bool SubjectConditions::save(const QString& name, AnalysisSettings& settings)
{
    if (!m_isRead) {
        runtime::warn(u"各科条件没有读出来，没有保存。"_s);
        return false;
    }
    int stored = 0;
    const bool written = savingConditions([&] {
        database::WriteBatch batch(m_library.Conn);
        for (int row = 1; row < conditions.Rows(); ++row)
            stored += int(saveRow(name, row));
        batch.commit();
    });
    if (!written || (stored == 0 && conditions.Rows() > 1))
        return false;
    m_unchanged = grid::gridText(conditions);
    savingConditions([&] { settings.useConditions(SetRow); });
    runtime::MsgBox(u"设置保存成功！"_s);
    return true;
}

bool SubjectConditions::remove(const QString& name)
{
    const bool removed = deleting([&] {
        database::WriteBatch batch(m_library.Conn);
        Recordset rows;
        rows.Open(u"delete * from 详细设置表 where 设置名称=?"_s, {name}, m_library.Conn);
        batch.commit();
    });
    if (removed)
        runtime::MsgBox(u"保存设置成功！"_s);
    return removed;
}

} // namespace configuration
