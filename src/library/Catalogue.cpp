#include "library/Catalogue.h"

#include <algorithm>

#include "library/ColumnNames.h"
#include "platform/database/Recordset.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;
using runtime::Icon;
using runtime::MsgBox;
using runtime::Trap;
using runtime::Value;

namespace {

/// The rows of one exam and stream, as they were entered.
const QString examRows = u"select * from 考试名称表 WHERE 考试名称=? and 科类=?"_s;
/// The rows of one exam and stream by 考试编号.
const QString orderedExamRows =
    u"select * from 考试名称表 WHERE 考试名称=? and 科类=? order by 考试编号"_s;

/// The stream that lends its columns: 理 to 文, and 文 to any other.
QString otherStream(const QString& stream)
{
    return stream == u"文"_s ? u"理"_s : u"文"_s;
}

/// The stream itself, and 理 where it is 文: for questions to which 文 lends nothing.
QStringList withScience(const QString& stream)
{
    return stream == u"文"_s ? QStringList{stream, u"理"_s} : QStringList{stream};
}

/// Opens the exam's row of the first of these streams that has one; false if none has.
bool openExamRow(database::Recordset& rows, database::Connection& conn, const QString& sql,
                 const QString& exam, const QStringList& streams)
{
    return std::any_of(streams.begin(), streams.end(), [&](const QString& stream) {
        rows.Open(sql, {exam, stream}, conn);
        return rows.RecordCount() > 0;
    });
}

} // namespace

QStringList examNames(const QString& exams)
{
    return runtime::splitList(exams, u","_s);
}

QStringList formulaTerms(const QString& formula)
{
    return runtime::splitList(formula, u"+"_s);
}

QStringList listedExams(const QStringList& names)
{
    QStringList exams;
    QString seen;
    for (const QString& exam : names) {
        if (seen.contains(exam) && !(exam.isEmpty() && seen.isEmpty()))
            continue;
        seen += exam + u","_s;
        exams.append(exam);
    }
    return exams;
}

void Catalogue::GetKeLei()
{
    const Trap trap{" - Sub GetKeLei/Mdl_MDB"};
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select distinct 科类 from 信息表"_s, m_conn);
        if (rows.RecordCount() > 2) {
            runtime::warn(u"科类设置不正确，请重新设置科类。"_s);
            return;
        }
        QStringList streams;
        for (; !rows.Eof(); rows.MoveNext()) {
            const QString stream = rows.Fields(0).Value().text();
            if (stream.isEmpty())
                runtime::warn(u"学生科类不能为空，如果不分文理，默认值设为“理”\n请修改！"_s);
            streams.append(stream);
        }
        Streams = streams;
    });
}

void Catalogue::GetKSXX()
{
    const Trap trap{" - Sub GetKSXX/Mdl_MDB"};
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select 考试名称 from 考试名称表 order by 考试编号"_s, m_conn);
        QStringList exams;
        for (; !rows.Eof(); rows.MoveNext())
            exams.append(rows.Fields(0).Value().text());
        ExamList = listedExams(exams);
    });
    trap([&] {
        const database::TableColumns& fields = m_conn.columns(u"考试名称表"_s);
        AllColumns.clear();
        SubjectColumns.clear();
        TotalColumns.clear();
        for (int i = fixedExamFields; i < fields.count(); ++i) {
            const QString& name = fields.at(i).name;
            AllColumns.append(name);
            (isTotal(name) ? TotalColumns : SubjectColumns).append(name);
        }
        m_totalFormulas = QStringList(TotalColumns.size(), QString());
    });
    GetBJXX();
}

void Catalogue::GetBJXX()
{
    const Trap trap{" - Sub GetBJXX/Mdl_MDB"};
    std::vector<std::vector<ClassEntry>> table;
    for (const QString& stream : std::as_const(Streams)) {
        std::vector<ClassEntry>& classes = table.emplace_back();
        trap([&] {
            database::Recordset rows;
            // A class counts all its students, those of another stream too.
            rows.Open(
                u"select 班级, (select count(*) from 信息表 同班 where 同班.班级=信息表.班级) "
                "from 信息表 where 科类=? group by 班级 order by 班级"_s,
                {stream}, m_conn);
            for (; !rows.Eof(); rows.MoveNext()) {
                const runtime::Value number = rows.Fields(0).Value();
                if (number.isNull())
                    trap.fail(u"有学生没有班级。"_s);
                classes.push_back(
                    {runtime::Val(number), int(runtime::Val(rows.Fields(1).Value()))});
            }
        });
    }
    ClassTable = std::move(table);
}

namespace {

/// Adds up, per column of the library, what each exam says of it.
class MarkSums
{
public:
    explicit MarkSums(const QStringList& columns)
        : m_columns(columns), m_sums(size_t(columns.size()), 0.0)
    {
    }

    void add(qsizetype column, const QString& text)
    {
        if (!text.isEmpty())
            m_sums[size_t(column)] += runtime::Val(text);
    }

    /// The columns with a positive sum.
    ColumnMarks examined() const
    {
        ColumnMarks found;
        for (qsizetype i = 0; i < m_columns.size(); ++i) {
            if (!(m_sums[size_t(i)] > 0))
                continue;
            found.names.append(m_columns[i]);
            found.marks.push_back(m_sums[size_t(i)]);
        }
        return found;
    }

private:
    const QStringList& m_columns;
    std::vector<double> m_sums;
};

} // namespace

ColumnMarks Catalogue::GetKSKM(const QString& exams, const QString& stream)
{
    const Trap trap{" - Function GetKSKM/Mdl_MDB"};
    trap([&] {
        MarkSums sums(AllColumns);
        for (const QString& exam : examNames(exams)) {
            database::Recordset rows;
            if (!openExamRow(rows, m_conn, orderedExamRows, exam, withScience(stream)))
                continue;
            for (qsizetype i = 0; i < AllColumns.size(); ++i)
                sums.add(i, rows.Fields(AllColumns[i]).Value().text());
        }
        m_examSubjects = sums.examined();
    });
    return m_examSubjects;
}

namespace {

/// A field of an exam row as a Single; a text that is no number is the engine's error.
float singleField(database::Recordset& rows, const QString& column)
{
    const Value value = rows.Fields(column).Value();
    const database::ColumnType single{database::ColumnType::Kind::Single};
    return value.isNull() ? 0 : float(single.converted(value, column).toDouble());
}

const Trap totalTrap{" - Function GetZFMF/Mdl_MDB"};

/// Opens the row of an exam that says what its totals add up; 理 lends its row to 文. False if
/// there is none, or after a message.
bool openFormulas(database::Recordset& rows, database::Connection& conn, const QString& exam,
                  const QString& stream)
{
    bool found = false;
    totalTrap([&] { found = openExamRow(rows, conn, examRows, exam, withScience(stream)); });
    return found;
}

/// The full mark of a total: those of its terms, added up.
float totalMark(database::Recordset& formulas, const QString& total)
{
    float marks = 0;
    totalTrap([&] {
        for (const QString& term : formulaTerms(formulas.Fields(total).Value().text()))
            totalTrap([&] { marks += singleField(formulas, term); });
    });
    return marks;
}

} // namespace

ColumnMarks Catalogue::GetKSKMZF(const QString& exams, const QString& stream)
{
    const Trap trap{" - Function GetKSKMZF/Mdl_MDB"};
    trap([&] {
        MarkSums sums(AllColumns);
        for (const QString& exam : examNames(exams)) {
            database::Recordset rows;
            if (!openExamRow(rows, m_conn, orderedExamRows, exam, {stream, otherStream(stream)}))
                continue;
            database::Recordset formulas;
            const bool hasFormulas =
                !TotalColumns.isEmpty() && openFormulas(formulas, m_conn, exam, stream);
            for (qsizetype i = 0; i < AllColumns.size(); ++i) {
                const QString& column = AllColumns[i];
                if (!isTotal(column))
                    sums.add(i, rows.Fields(column).Value().text());
                else if (hasFormulas)
                    sums.add(i, runtime::singleText(totalMark(formulas, column)));
            }
        }
        m_examColumns = sums.examined();
    });
    return m_examColumns;
}

QStringList Catalogue::GetZFKMGS(const QString& exam, const QString& stream)
{
    const Trap trap{" - Function GetZFKMGS/Mdl_MDB"};
    trap([&] {
        database::Recordset rows;
        rows.Open(examRows, {exam, stream}, m_conn);
        if (rows.RecordCount() == 0)
            rows.Open(orderedExamRows, {exam, otherStream(stream)}, m_conn);
        for (qsizetype i = 0; i < TotalColumns.size(); ++i)
            trap([&] { m_totalFormulas[i] = rows.Fields(TotalColumns[i]).Value().text(); });
    });
    return m_totalFormulas;
}

float Catalogue::getKMMF(const QString& exam, const QString& stream, const QString& subject)
{
    const Trap trap{" - Function getKMMF/Mdl_MDB"};
    float marks = 0;
    trap([&] {
        database::Recordset rows;
        if (openExamRow(rows, m_conn, examRows, exam, {stream, otherStream(stream)}))
            marks = singleField(rows, subject);
    });
    return marks;
}

float Catalogue::GetZFMF(const QString& exam, const QString& stream, const QString& total)
{
    database::Recordset formulas;
    return openFormulas(formulas, m_conn, exam, stream) ? totalMark(formulas, total) : 0;
}

namespace {

/// An exam number, which has 16 bits. Throws Error for NULL and for one that does not fit.
int examNumber(const Value& number)
{
    if (number.isNull())
        throw runtime::Error(u"考试没有考试编号。"_s);
    const database::ColumnType integer{database::ColumnType::Kind::Integer};
    return int(integer.converted(number, u"考试编号"_s).toDouble());
}

} // namespace

int Catalogue::GetKSBH(const QString& exam)
{
    const Trap trap{" - Function GetKSBH/Mdl_MDB"};
    int number = 0;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select *  from 考试名称表 order by 考试编号"_s, m_conn);
        for (; !rows.Eof(); rows.MoveNext()) {
            if (rows.Fields(u"考试名称"_s).Value().text() == exam)
                trap([&] { number = examNumber(rows.Fields(u"考试编号"_s).Value()); });
        }
    });
    if (number != 0)
        return number;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select max(考试编号)  from 考试名称表"_s, m_conn);
        const Value highest = rows.Fields(0).Value();
        number = highest.isNull() ? 1 : examNumber(highest.toDouble() + 1);
    });
    return number;
}

bool Catalogue::isKeMu(const QString& name) const
{
    return isKeMuZF(name) && !isTotal(name);
}

bool Catalogue::isKeMuZF(const QString& name) const
{
    return AllColumns.contains(name);
}

int Catalogue::GetKmID(const QString& name) const
{
    const qsizetype found = AllColumns.indexOf(name);
    return found < 0 ? -1 : int(found) + 1;
}

} // namespace library
