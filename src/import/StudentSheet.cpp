#include "import/StudentSheet.h"

#include <algorithm>

#include <QFileInfo>

#include "import/CellDate.h"
#include "import/WorkbookIntake.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

CellRule ruleOf(const QString& heading)
{
    if (heading.compare("ID"_L1, Qt::CaseInsensitive) == 0)
        return CellRule::PassedOver;
    if (heading == u"类别代码"_s || heading == u"班级"_s || heading == u"学号"_s)
        return CellRule::Number;
    if (heading == u"出生时间"_s || heading == u"入学时间"_s)
        return CellRule::Date;
    return heading == u"照片名"_s ? CellRule::Photo : CellRule::AsItStands;
}

std::optional<Value> dateValue(const Value& cell)
{
    if (isEmptyCell(cell))
        return std::nullopt;
    const std::optional<QDateTime> date = cellDate(cell);
    if (!date)
        throw runtime::Error(u"“%1”不是日期。"_s.arg(cell.text()));
    return Value(Value(*date).text());
}

} // namespace

StudentSheet::StudentSheet(const excel::Worksheet& sheet) : m_sheet(sheet)
{
    const int lastRow = m_sheet.lastUsedRow();
    while (m_end <= lastRow && !isEmptyCell(m_sheet.Cells(m_end, 1)))
        ++m_end;
    for (int column = 1; column <= LastColumn; ++column) {
        const Value heading = m_sheet.Cells(1, column);
        if (isEmptyCell(heading))
            return;
        m_headings.push_back({heading.text(), ruleOf(heading.text())});
    }
}

std::vector<int> StudentSheet::rowsLeft() const
{
    std::vector<int> left;
    for (int row = m_end; row <= m_sheet.lastUsedRow(); ++row) {
        int column = 1;
        if (std::any_of(m_headings.begin(), m_headings.end(), [&](const StudentHeading&) {
                return !isEmptyCell(m_sheet.Cells(row, column++));
            }))
            left.push_back(row);
    }
    return left;
}

void refuseError(const Value& cell)
{
    if (cell.kind() == Value::Kind::Error)
        throw runtime::Error(errorCellText(cell));
}

std::optional<Value> studentValue(CellRule rule, const Value& cell)
{
    if (rule == CellRule::Number)
        return Value(runtime::Val(cell));
    return rule == CellRule::Date ? dateValue(cell) : cell;
}

QString photoFile(const Value& cell, const QString& folder, qint64 largest)
{
    const QString name = cell.text();
    const QString path = QString(name).replace(u'\\', u'/');
    for (const QString& photo : {path, QString(folder + path)}) {
        const QFileInfo file(photo);
        if (!file.isFile())
            continue;
        if (file.size() > largest)
            throw runtime::Error(
                u"照片“%1”太大，没有存入；最大 %2 MB。"_s.arg(name).arg(largest / 1'000'000));
        return photo;
    }
    return {};
}

QString passedOverText(const QString& heading)
{
    return u"“%1”是成绩库给学生编的号，不能由名单规定，名单里的这一列没有导入。"_s.arg(heading);
}

} // namespace importing
