#include "import/ExamWriter.h"

#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Val;
using runtime::Value;

namespace {

const Trap writerTrap{" - Private Sub Command1_Click/FormDaoRu"};

const QString absent = u"缺考"_s;

/// A number read back from the staging grid; a text that is none goes to the field as it stands.
Value numberOrText(const QString& text)
{
    return text.isEmpty() ? Value(text) : Value(Val(text));
}

} // namespace

ExamWriter::ExamWriter(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes,
                       KnownStudents& students, const ImportState& state, ExamChoice examChoice)
    : m_library(scoreLibrary),
      m_classes(classes),
      m_students(students),
      m_state(state),
      m_examChoice(examChoice)
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

void ExamWriter::writeExamRow(const QString& stream)
{
    const bool opened = writerTrap([&] {
        if (m_examChoice == ExamChoice::Typed) {
            const int number = m_library.catalogue.GetKSBH(m_state.ExamName);
            m_rows.Open(u"select *  from 考试名称表 order by 考试编号"_s, m_library.Conn);
            m_rows.AddNew();
            setExamField(u"考试名称"_s, m_state.ExamName);
            setExamField(u"科类"_s, stream);
            setExamField(u"考试编号"_s, number);
        } else {
            m_rows.Open(u"select *  from 考试名称表 where 考试名称='"_s + m_state.ExamName
                            + u"' order by 考试编号"_s,
                        m_library.Conn);
        }
    });
    if (!opened)
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
            formula.Open(u"select *  from 总分公式 where 总分='"_s + total + u"'"_s,
                         m_library.Conn);
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
    if (m_examChoice == ExamChoice::Typed)
        writerTrap([&] { m_rows.Open(u"select *  from 成绩表"_s, m_library.Conn); });
}

void ExamWriter::writeScoreRow(int row)
{
    const QString& classText = m_state.MFGData.TextMatrix(row, 0);
    const QString& numberText = m_state.MFGData.TextMatrix(row, 1);
    const QString& name = m_state.MFGData.TextMatrix(row, 2);
    if (classText.isEmpty() || !openStudentRow(classText, numberText, name))
        return;
    setStudent(classText, numberText, name);
    setScores(row);
    writerTrap([&] { m_rows.Update(); });
    if (m_examChoice == ExamChoice::PickedFromList)
        m_rows.Close();
}

bool ExamWriter::openStudentRow(const QString& classText, const QString& numberText,
                                const QString& name)
{
    return writerTrap([&] {
        if (m_examChoice == ExamChoice::Typed) {
            m_rows.AddNew();
            return;
        }
        m_rows.Open(u"select *  from 成绩表 where 班级="_s + classText + u" and 学号="_s
                        + numberText + u" and 姓名='"_s + name + u"'"_s,
                    m_library.Conn);
        if (m_rows.RecordCount() == 0)
            m_rows.AddNew();
    });
}

void ExamWriter::setStudent(const QString& classText, const QString& numberText,
                            const QString& name)
{
    const double classNumber = Val(classText);
    set(m_columns->classNumber, numberOrText(classText));
    set(m_columns->number, numberOrText(numberText));
    set(m_columns->name, name);
    set(m_columns->category, m_classes.GetLeiBie(classNumber));
    set(m_columns->stream, m_classes.GetBJKL(classNumber));
    set(m_columns->exam, m_state.ExamName);
    set(m_columns->examNumber, m_examNumber);
    setStudentId(classNumber, Val(numberText));
}

/// A row keeps the student that it has; a new row, or one of a student who was refused, gets the
/// ID.
void ExamWriter::setStudentId(double classNumber, double number)
{
    writerTrap([&] {
        database::Field id = m_columns->id.in(m_rows);
        if (!id.Value().isNull())
            return;
        const KnownStudents::Student* student = m_students.find(classNumber, number);
        id.setValue(student == nullptr ? Value() : Value(student->id));
    });
}

void ExamWriter::setScores(int row)
{
    int stagingColumn = 3;
    for (const database::FieldByName& column : m_scoreColumns) {
        const QString& text = m_state.MFGData.TextMatrix(row, stagingColumn++);
        set(column, text == absent ? -1.0 : Val(text));
    }
}

} // namespace importing
