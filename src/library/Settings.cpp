#include "library/Settings.h"

#include <QRegularExpression>

#include "platform/database/Recordset.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;

const QString ComparedExams = u"进行对比分析的考试"_s;
const QString AllOfThem = u"(全部)"_s;
using runtime::Trap;

namespace {

/// One field of the row of 设置表 with that name, or "".
QString settingField(database::Connection& conn, const QString& name, const QString& field)
{
    database::Recordset rows;
    rows.Open(u"select * from 设置表 where 名称=?"_s, {name}, conn);
    return rows.RecordCount() > 0 ? rows.Fields(field).Value().text() : QString();
}

bool areNumbers(const QString& codes)
{
    const QStringList all = runtime::splitList(codes, u","_s);
    return std::all_of(all.begin(), all.end(), [](const QString& code) {
        bool isNumber = false;
        code.toDouble(&isNumber);
        return isNumber;
    });
}

} // namespace

QString Settings::GetSZ(const QString& name)
{
    const Trap trap{" - Function GetSZ/Mdl_MDB"};
    QString value;
    trap([&] { value = settingField(m_conn, name, u"设置"_s); });
    return value;
}

QString Settings::GetSZJR(const QString& name)
{
    const Trap trap{" - Function GetSZJR/Mdl_MDB"};
    QString value;
    trap([&] { value = settingField(m_conn, name, u"加入综合分析"_s); });
    return value;
}

QString Settings::GetXXSZ(const QString& name, const QString& stream, const QString& subject)
{
    const Trap trap{" - Function GetXXSZ/Mdl_MDB"};
    QString condition;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select * from 详细设置表 where 设置名称=? and 科类=? and 科目=?"_s,
                  {name, stream, subject}, m_conn);
        if (rows.RecordCount() == 0)
            return;
        const auto field = [&](const QString& column) {
            return rows.Fields(column).Value().text();
        };
        condition = subject + field(u"条件1"_s) + field(u"分数1"_s) + u" and "_s + subject
                    + field(u"条件2"_s) + field(u"分数2"_s);
    });
    return condition;
}

void Settings::GetTJLB()
{
    const Trap trap{" - Sub GetTJLB/Mdl_MDB"};
    trap([&] {
        CategoryFilter.clear();
        const QString codes = GetSZ(u"参与统计的学生类别代码"_s);
        if (codes == AllOfThem || codes.isEmpty())
            return;
        // Between apostrophes a code that is no number is refused by every statement, instead of
        // becoming more of it than a code.
        const Quote quote = areNumbers(codes) ? Quote::None : Quote::Single;
        CategoryFilter =
            u" and ("_s + GetSouSuoChuan(codes, u","_s, u"类别代码"_s, Joiner::Or, quote) + u")"_s;
    });
}

QString Settings::GetSouSuoChuan(const QString& text, const QString& separator,
                                 const QString& field, Joiner joiner, Quote quote)
{
    const Trap trap{" - Function GetSouSuoChuan/Mdl_MDB"};
    QString condition;
    trap([&] {
        const QString mark = quote == Quote::None ? QString() : u"'"_s;
        const QString join = joiner == Joiner::And ? u" And "_s : u" or "_s;
        for (const QString& token : runtime::splitList(text, separator))
            condition += field + u"="_s + mark + token + mark + join;
        if (!condition.isEmpty())
            condition = runtime::DelLast(condition, int(join.size()));
    });
    return condition;
}

QStringList Settings::GetZDYXS(const QString& name)
{
    const Trap trap{" - Sub GetZDYXS/Mdl_MDB"};
    QStringList items;
    trap([&] { items = scoreColumns(storedColumns(name)); });
    return items;
}

QStringList Settings::storedColumns(const QString& name)
{
    database::Recordset rows;
    rows.Open(u"select * from 自定义显示表 where 项目名称=?"_s, {name}, m_conn);
    if (rows.RecordCount() == 0)
        return {};
    return rows.Fields(u"显示项目"_s).Value().text().split(u',', Qt::SkipEmptyParts);
}

QStringList Settings::scoreColumns(const QStringList& names)
{
    const database::TableColumns& fields = m_conn.columns(u"成绩表"_s);
    QStringList known = names;
    known.removeIf([&](const QString& name) {
        return std::none_of(fields.begin(), fields.end(),
                            [&](const database::Column& c) { return c.name == name; });
    });
    return known;
}

QStringList categoriesIn(const QString& filter)
{
    static const QRegularExpression code(u"类别代码='?([^'()]*?)'?(?: or |\\)|$)"_s);
    QStringList codes;
    for (const QRegularExpressionMatch& match : code.globalMatch(filter))
        codes.append(match.captured(1).trimmed());
    return codes;
}

} // namespace library
