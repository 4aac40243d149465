#include "import/ExamWriter.h"

#include "import/ScoreCell.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Val;
using runtime::Value;

namespace {

const Trap writerTrap{" - Private Sub Command1_Click/FormDaoRu"};

// Columns of the staging grid ahead of the scores.
constexpr int stagedClass = 0;
constexpr int stagedNumber = 1;
constexpr int stagedName = 2;

/// A number read back from the staging grid; a text that is none goes to the field as it stands.
Value numberOrText(const QString& text)
{
    return text.isEmpty() ? Value(text) : Value(Val(text));
}

} // namespace

ExamWriter::ExamWriter(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes,
                       const ImportState& state, ScoreTarget target)
    : m_library(scoreLibrary),
      m_classes(classes),
      m_state(state),
      m_target(target),
      m_examRows(scoreLibrary.Conn, state.ExamName)
{
}

void ExamWriter::setExamField(const QString& column, const Value& value)
{
    writerTrap([&] { m_rows.Fields(column).setValue(value); });
}

database::FieldByName ExamWriter::findColumn(const QString& name) const
{
    return {name, m_library.Conn.columns(u"成绩表"_s).find(name)};
}

void ExamWriter::findColumns()
{
    m_columns =
        StudentColumns{findColumn(u"班级"_s),     findColumn(u"学号"_s), findColumn(u"姓名"_s),
                       findColumn(u"类别代码"_s), findColumn(u"科类"_s), findColumn(u"考试名称"_s),
                       findColumn(u"考试编号"_s), findColumn(u"id"_s)};
    m_scoreColumns.clear();
    for (const ImportSubject& subject : m_state.KMImport)
        m_scoreColumns.push_back(findColumn(subject.KMName));
}

void ExamWriter::set(const database::FieldByName& column, const Value& value)
{
    writerTrap([&] { column.in(m_rows).setValue(value); });
}

void ExamWriter::addExamRow(const QString& stream)
{
    const int number = m_library.catalogue.GetKSBH(m_state.ExamName);
    m_rows.AddNew();
    setExamField(u"考试名称"_s, m_state.ExamName);
    setExamField(u"科类"_s, stream);
    setExamField(u"考试编号"_s, number);
}

/// The row id that a statement finds first, or Null. Texts may hold anything here.
Value ExamWriter::firstRow(const QString& sql, const std::vector<Value>& values) const
{
    database::Statement& rows = m_library.Conn.prepared(sql);
    rows.bind(values);
    Value found = rows.step() ? rows.value(0) : Value();
    rows.finish();
    return found;
}

Value ExamWriter::rowOfStream(const QString& stream) const
{
    return firstRow(u"select rowid from 考试名称表 where 考试名称=? and 科类=? "
                    "order by 考试编号, rowid limit 1"_s,
                    {m_state.ExamName, stream});
}

ScoredStudent ExamWriter::studentOf(int row) const
{
    const grid::FlexGrid& staging = m_state.MFGData;
    return {Val(staging.TextMatrix(row, stagedClass)), Val(staging.TextMatrix(row, stagedNumber)),
            staging.TextMatrix(row, stagedName), m_state.studentIds[size_t(row)]};
}

qint64 ExamWriter::rowOf(const ScoredStudent& student)
{
    if (m_target == ScoreTarget::ExamRows)
        return m_examRows.find(student);
    const std::optional<FirstRow> first =
        firstRowOf(m_library.Conn, m_state.ExamName, student, RowName::Written);
    return first ? first->row : 0;
}

void ExamWriter::openExamRow(const QString& stream)
{
    const QString& exam = m_state.ExamName;
    switch (m_target) {
    case ScoreTarget::NewRows:
        m_rows.Open(u"select *  from 考试名称表 order by 考试编号"_s, m_library.Conn);
        addExamRow(stream);
        break;
    case ScoreTarget::FirstRows:
        m_rows.Open(u"select *  from 考试名称表 where 考试名称=? order by 考试编号"_s, {exam},
                    m_library.Conn);
        break;
    case ScoreTarget::ExamRows:
        m_rows.Open(u"select *  from 考试名称表 where rowid=?"_s, {rowOfStream(stream)},
                    m_library.Conn);
        if (m_rows.RecordCount() == 0)
            addExamRow(stream);
    }
}

void ExamWriter::writeExamRow(const QString& stream)
{
    if (!writerTrap([&] { openExamRow(stream); }))
        return;
    for (const ImportSubject& subject : m_state.KMImport)
        setExamField(subject.KMName, subject.KMFull);
    copyFormulas();
    writerTrap([&] { m_rows.Update(); });
    m_rows.Close();
}

void ExamWriter::copyFormulas()
{
    for (const QString& total : m_library.catalogue.TotalColumns) {
        writerTrap([&] {
            database::Recordset formula;
            formula.Open(u"select *  from 总分公式 where 总分=?"_s, {total}, m_library.Conn);
            m_rows.Fields(total).setValue(formula.Fields(u"公式"_s).Value());
        });
    }
}

void ExamWriter::beginScores()
{
    // The exam's row stands by now and no further one is added, so the number is the same for each
    // row.
    m_examNumber = m_library.catalogue.GetKSBH(m_state.ExamName);
    findColumns();
    if (m_target == ScoreTarget::NewRows)
        writerTrap([&] { m_rows.Open(u"select *  from 成绩表"_s, m_library.Conn); });
}

void ExamWriter::writeScoreRow(int row)
{
    if (m_state.MFGData.TextMatrix(row, stagedClass).isEmpty() || !openStudentRow(row))
        return;
    setStudent(row);
    setScores(row);
    writerTrap([&] { finishRow(); });
    if (m_target != ScoreTarget::NewRows)
        m_rows.Close();
}

bool ExamWriter::openStudentRow(int row)
{
    return writerTrap([&] {
        m_row = 0;
        if (m_target == ScoreTarget::NewRows)
            return m_rows.AddNew();
        if (m_state.MFGData.TextMatrix(row, stagedNumber).isEmpty())
            throw runtime::Error(u"没有学号，找不到这名学生的成绩。"_s);
        m_row = rowOf(studentOf(row));
        m_rows.Open(u"select *  from 成绩表 where rowid=?"_s, {m_row}, m_library.Conn);
        if (m_rows.RecordCount() == 0)
            m_rows.AddNew();
    });
}

/// A further row of the sheet can be the same student's.
void ExamWriter::finishRow()
{
    m_rows.Update();
    if (m_target != ScoreTarget::ExamRows)
        return;
    m_examRows.set(
        m_row == 0 ? m_rows.lastInsertId() : m_row,
        {Val(m_columns->classNumber.in(m_rows).Value()), Val(m_columns->number.in(m_rows).Value()),
         m_columns->name.in(m_rows).Value().text(), qint64(Val(m_columns->id.in(m_rows).Value()))});
}

void ExamWriter::setStudent(int row)
{
    const QString& classText = m_state.MFGData.TextMatrix(row, stagedClass);
    const double classNumber = Val(classText);
    set(m_columns->classNumber, numberOrText(classText));
    set(m_columns->number, numberOrText(m_state.MFGData.TextMatrix(row, stagedNumber)));
    set(m_columns->name, m_state.MFGData.TextMatrix(row, stagedName));
    set(m_columns->category, m_classes.GetLeiBie(classNumber));
    set(m_columns->stream, m_classes.GetBJKL(classNumber));
    set(m_columns->exam, m_state.ExamName);
    set(m_columns->examNumber, m_examNumber);
    setStudentId(m_state.studentIds[size_t(row)]);
}

/// A row keeps the student that it has; a new row, or one of a student who was refused, gets the
/// ID.
void ExamWriter::setStudentId(qint64 student)
{
    writerTrap([&] {
        database::Field id = m_columns->id.in(m_rows);
        if (Val(id.Value()) == 0)
            id.setValue(student == 0 ? Value() : Value(student));
    });
}

void ExamWriter::setScores(int row)
{
    int stagingColumn = stagedName + 1;
    for (const database::FieldByName& column : m_scoreColumns) {
        const QString& text = m_state.MFGData.TextMatrix(row, stagingColumn++);
        set(column, storedScore(text));
    }
}

} // namespace importing
