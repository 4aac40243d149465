#include "individual/StudentExams.h"

#include "library/ColumnNames.h"
#include "platform/database/ReadBatch.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace individual {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Value;

namespace {

const Trap showTrap{" - Sub ShowGeRenCJ/FormGeRenChenJi"};

constexpr double unitsOfACharacter = 1.15;

void setHeadings(grid::FlexGrid& grid, const QStringList& columns)
{
    const int count = int(columns.size());
    grid.setTextMatrix(0, 0, u"考试名称"_s);
    for (int i = 1; i <= count; ++i) {
        const QString& column = columns[i - 1];
        grid.setTextMatrix(0, i, column);
        grid.setTextMatrix(0, i + count, column.left(1) + u"名"_s);
    }
}

} // namespace

StudentExams::StudentExams(library::ScoreLibrary& scores, double characterWidth) : m_scores(scores)
{
    const QStringList& columns = scores.catalogue.AllColumns;
    MSFlexGrid1.setCols(2 * int(columns.size()) + 1);
    MSFlexGrid1.setRows(int(scores.catalogue.ExamList.size()) + 1);
    setHeadings(MSFlexGrid1, columns);
    const double CellUnit = characterWidth * unitsOfACharacter;
    MSFlexGrid1.setColWidth(-1, qRound(CellUnit * 2));
    MSFlexGrid1.setColWidth(0, qRound(CellUnit * 4));
}

void StudentExams::ShowGeRenCJ(qint64 id)
{
    const database::ReadBatch oneState(m_scores.Conn);
    StuID = id;
    database::Recordset rows;
    showTrap([&] {
        rows.Open(u"select *  from 成绩表 where id=? order by 考试编号"_s, {id}, m_scores.Conn);
    });
    showTrap([&] { StuKL = rows.Fields(u"科类"_s).Value(); });
    showTrap([&] { StuBJ = rows.Fields(u"班级"_s).Value(); });
    showTrap([&] { StuName = rows.Fields(u"姓名"_s).Value(); });
    MSFlexGrid1.Redraw = false;
    showTrap([&] { MSFlexGrid1.setRows(int(rows.RecordCount()) + 1); });
    showTrap([&] {
        for (int row = 1; !rows.Eof(); rows.MoveNext())
            fillRow(row++, rows);
    });
    MSFlexGrid1.Redraw = true;
}

void StudentExams::fillRow(int row, database::Recordset& rows)
{
    showTrap([&] { MSFlexGrid1.setTextMatrix(row, 0, rows.Fields(u"考试名称"_s).Value().text()); });
    const QStringList& columns = m_scores.catalogue.AllColumns;
    const int count = int(columns.size());
    for (int i = 1; i <= count; ++i) {
        const QString& column = columns[i - 1];
        setMark(row, i, rows, column);
        setMark(row, i + count, rows, library::gradeRankColumn(column));
    }
}

void StudentExams::setMark(int row, int col, database::Recordset& rows, const QString& column)
{
    showTrap([&] {
        const double mark = runtime::Val(rows.Fields(column).Value().text());
        MSFlexGrid1.setTextMatrix(row, col, mark < 0 ? u"缺考"_s : runtime::doubleText(mark));
    });
}

QStringList StudentExams::exams() const
{
    QStringList names;
    for (int row = 1; row < MSFlexGrid1.Rows(); ++row)
        names.append(MSFlexGrid1.TextMatrix(row, 0));
    return names;
}

QString noExams()
{
    return u"成绩库里还没有考试，导入考试以后才有成绩和名次可以分析。"_s;
}

QString studentTitle(library::ScoreLibrary& scores, qint64 id)
{
    return u"个人分析   -  "_s + scores.students.GetGRXX(id);
}

QString cellTip(const grid::FlexGrid& grid, int row, int col)
{
    if (row > 0)
        return {};
    const QString& text = grid.TextMatrix(row, col);
    return text.isEmpty() ? u"此科未考试！"_s : text;
}

} // namespace individual
