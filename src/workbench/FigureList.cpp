#include "workbench/FigureList.h"

#include <algorithm>

#include "platform/database/ReadBatch.h"
#include "platform/database/Recordset.h"
#include "platform/runtime/Numbers.h"
#include "statistics/FigureWords.h"
#include "workbench/Browse.h"

namespace workbench {

using namespace Qt::StringLiterals;
using statistics::Figure;
using statistics::FigureKind;

namespace {

/// Heading of the column that says how 考试人数 counts a student.
const QString StateColumn = u"状态"_s;
constexpr int StateWidth = 2400;

bool isAttendance(const Figure& figure)
{
    return figure.kind == FigureKind::Attendance;
}

QStringList listColumns(const Figure& figure, const QStringList& columns)
{
    QStringList all{u"班级"_s, u"学号"_s, u"姓名"_s};
    if (isAttendance(figure))
        all.append(StateColumn);
    all.append(figure.column);
    for (const statistics::Comparison& comparison : figure.condition.comparisons())
        all.append(comparison.column);
    all += columns;
    all.removeDuplicates();
    return all;
}

/// Those of the columns that 成绩表 has.
QStringList existing(database::Connection& connection, QStringList columns)
{
    const database::TableColumns& known = connection.columns(u"成绩表"_s);
    columns.removeIf([&known](const QString& name) {
        return std::none_of(known.begin(), known.end(), [&name](const database::Column& column) {
            return column.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    });
    return columns;
}

void writeStates(const statistics::FigureGroup& group, int col, grid::FlexGrid& grid)
{
    for (size_t i = 0; i < group.marks.size(); ++i)
        grid.setTextMatrix(1 + int(i), col, statistics::attendanceWord(group.marks[i]));
}

void writeStudents(database::Connection& connection, const Figure& figure,
                   const statistics::StudentSql& behind, const QStringList& columns,
                   grid::FlexGrid& grid)
{
    database::Recordset rows;
    rows.Open(behind.sql, behind.values, connection);
    std::vector<database::FieldByName> fields;
    for (const QString& column : columns)
        fields.emplace_back(rows, column == StateColumn ? figure.column : column);
    grid.setRows(1 + int(rows.RecordCount()));
    for (int row = 1; !rows.Eof(); rows.MoveNext(), ++row) {
        for (int col = 0; col < columns.size(); ++col)
            grid.setTextMatrix(row, col, fields[size_t(col)].in(rows).Value().text());
    }
}

/// Those of the class who have no row there.
void writeOthers(database::Connection& connection, const Figure& figure, grid::FlexGrid& grid)
{
    const statistics::StudentSql others = statistics::studentsWithoutRow(figure);
    database::Recordset rows;
    rows.Open(others.sql, others.values, connection);
    for (; !rows.Eof(); rows.MoveNext()) {
        const int row = grid.Rows();
        grid.setRows(row + 1);
        const auto place = statistics::ScoreElsewhere(int(runtime::Val(rows.Fields(2).Value())));
        const QStringList cells{runtime::doubleText(figure.classNumber),
                                rows.Fields(0).Value().text(), rows.Fields(1).Value().text(),
                                statistics::elsewhereWord(place)};
        for (int col = 0; col < cells.size(); ++col)
            grid.setTextMatrix(row, col, cells[col]);
    }
}

} // namespace

FigureList listStudents(library::ScoreLibrary& scoreLibrary, const Figure& figure,
                        const QStringList& columns)
{
    const database::ReadBatch reading(scoreLibrary.Conn);
    const QStringList shown = listColumns(figure, existing(scoreLibrary.Conn, columns));
    const statistics::StudentSql behind = statistics::rowsBehind(figure);
    FigureList list;
    list.grid.FixedCols = 0;
    list.grid.setCols(int(shown.size()));
    list.grid.setRows(1);
    writeHeadings(list.grid, shown);
    writeStudents(scoreLibrary.Conn, figure, behind, shown, list.grid);
    const statistics::FigureGroup group = statistics::readGroup(scoreLibrary.Conn, figure);
    if (isAttendance(figure)) {
        const int stateColumn = int(shown.indexOf(StateColumn));
        list.grid.setColWidth(stateColumn, StateWidth);
        writeStates(group, stateColumn, list.grid);
        writeOthers(scoreLibrary.Conn, figure, list.grid);
    }
    list.sentence = statistics::figureSentence(figure, group);
    list.details = statistics::figureDetails(figure, group);
    list.change = statistics::figureChange(figure, group);
    list.sql = behind.asTyped();
    return list;
}

} // namespace workbench
