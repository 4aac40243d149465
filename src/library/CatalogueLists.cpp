// The lists of the catalogue; the questions about single exams and classes are in
// CatalogueLookups.cpp.
#include "library/Catalogue.h"

#include "library/CatalogueSql.h"
#include "platform/database/Recordset.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;
using runtime::Icon;
using runtime::MsgBox;
using runtime::Trap;

void Catalogue::GetKeLei()
{
    const Trap trap{" - Sub GetKeLei/Mdl_MDB"};
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select distinct 科类 from 信息表"_s, m_conn);
        if (rows.RecordCount() > 2) {
            MsgBox(u"科类设置不正确，请重新设置科类。"_s, {}, runtime::Buttons::Ok, Icon::Warning);
            return;
        }
        QStringList streams;
        for (; !rows.Eof(); rows.MoveNext()) {
            const QString stream = rows.Fields(0).Value().text();
            if (stream.isEmpty())
                MsgBox(u"学生科类不能为空，如果不分文理，默认值设为“理”\n请修改！"_s, {},
                       runtime::Buttons::Ok, Icon::Warning);
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
        // The test goes by substring: an exam named as a part of an earlier one is not listed.
        QString seen;
        for (; !rows.Eof(); rows.MoveNext()) {
            const QString exam = rows.Fields(0).Value().text();
            if (seen.contains(exam) && !(exam.isEmpty() && seen.isEmpty()))
                continue;
            seen += exam + u","_s;
            exams.append(exam);
        }
        ExamList = exams;
    });
    trap([&] {
        AllColumns.clear();
        SubjectColumns.clear();
        TotalColumns.clear();
        const database::TableColumns& fields = m_conn.columns(u"考试名称表"_s);
        for (int i = FixedExamFields; i < fields.count(); ++i) {
            const QString& name = fields.at(i).name;
            AllColumns.append(name);
            (isTotal(name) ? TotalColumns : SubjectColumns).append(name);
        }
        TotalFormulas = QStringList(TotalColumns.size(), QString());
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
                "from 信息表 where 科类='"_s
                    + stream + u"' group by 班级 order by 班级"_s,
                m_conn);
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

QStringList examNames(const QString& exams)
{
    return exams.isEmpty() ? QStringList() : exams.split(u',');
}

} // namespace

void Catalogue::GetKSKM(const QString& exams, const QString& stream)
{
    const Trap trap{" - Function GetKSKM/Mdl_MDB"};
    trap([&] {
        MarkSums sums(AllColumns);
        for (const QString& exam : examNames(exams)) {
            database::Recordset rows;
            rows.Open(orderedExamRowSql(exam, stream), m_conn);
            if (rows.RecordCount() == 0 && stream == u"文"_s)
                rows.Open(orderedExamRowSql(exam, u"理"_s), m_conn);
            if (rows.RecordCount() == 0)
                continue;
            for (qsizetype i = 0; i < AllColumns.size(); ++i)
                sums.add(i, rows.Fields(AllColumns[i]).Value().text());
        }
        ExamSubjects = sums.examined();
    });
}

void Catalogue::GetKSKMZF(const QString& exams, const QString& stream)
{
    const Trap trap{" - Function GetKSKMZF/Mdl_MDB"};
    trap([&] {
        MarkSums sums(AllColumns);
        for (const QString& exam : examNames(exams)) {
            database::Recordset rows;
            rows.Open(orderedExamRowSql(exam, stream), m_conn);
            if (rows.RecordCount() == 0)
                rows.Open(orderedExamRowSql(exam, otherStream(stream)), m_conn);
            if (rows.RecordCount() == 0)
                continue;
            for (qsizetype i = 0; i < AllColumns.size(); ++i) {
                const QString& column = AllColumns[i];
                sums.add(i, isTotal(column) ? runtime::singleText(GetZFMF(exam, stream, column))
                                            : rows.Fields(column).Value().text());
            }
        }
        ExamColumns = sums.examined();
    });
}

void Catalogue::GetZFKMGS(const QString& exam, const QString& stream)
{
    const Trap trap{" - Function GetZFKMGS/Mdl_MDB"};
    trap([&] {
        database::Recordset rows;
        rows.Open(examRowSql(exam, stream), m_conn);
        if (rows.RecordCount() == 0)
            rows.Open(orderedExamRowSql(exam, otherStream(stream)), m_conn);
        for (qsizetype i = 0; i < TotalColumns.size(); ++i)
            trap([&] { TotalFormulas[i] = rows.Fields(TotalColumns[i]).Value().text(); });
    });
}

bool Catalogue::isTotal(const QString& column)
{
    return column.endsWith(u"总分"_s);
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
