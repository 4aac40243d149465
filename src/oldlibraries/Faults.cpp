#include "oldlibraries/Faults.h"

#include <QSet>

#include "oldlibraries/ExamFaults.h"
#include "oldlibraries/FaultKind.h"
#include "oldlibraries/ScoreFaults.h"
#include "oldlibraries/StudentFaults.h"
#include "oldlibraries/SubjectColumns.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

void findSettingFaults(database::Connection& library, std::vector<Finding>& findings)
{
    FaultKind same(u"设置表"_s, u"名称与前面的设置相同，原样转入；程序只用前面的一行。"_s);
    FaultKind unnamed(u"设置表"_s, u"设置没有名称；原样转入。"_s);
    database::Statement rows(library, u"select rtrim(名称) from 设置表 order by rowid"_s);
    QSet<QString> names;
    for (qint64 row = 1; rows.step(); ++row) {
        const QString name = rows.text(0);
        if (name.isEmpty())
            unnamed.add(row, u"名称"_s);
        else if (names.contains(name))
            same.add(row, u"名称"_s, name);
        names.insert(name);
    }
    same.tell(findings);
    unnamed.tell(findings);
}

/// Settings by subject of which no subject has one: older libraries lack the table of them.
void findEmptySettings(database::Connection& library, std::vector<Finding>& findings)
{
    FaultKind empty(u"设置表"_s,
                    u"详细设置表里没有它的各科条件，统计会出错；请在“分析设置”里重新设置。"_s);
    database::Statement rows(
        library, u"select row, 名称, 设置 from "
                 "(select row_number() over (order by rowid) row, 名称, 设置 from 设置表) "
                 "where 设置='(使用自定义数据)' and rtrim(名称) not in "
                 "(select rtrim(设置名称) from 详细设置表 where 设置名称 is not null) "
                 "order by row"_s);
    while (rows.step())
        empty.add(rows.integer(0), u"设置"_s, u"%1：%2"_s.arg(rows.text(1), rows.text(2)));
    empty.tell(findings);
}

void findColorFaults(database::Connection& library, std::vector<Finding>& findings)
{
    FaultKind unused(u"颜色表"_s, u"程序只用 0 到 15 号颜色，打开“个人分析”时会提示；原样转入。"_s);
    database::Statement rows(library, u"select ID from 颜色表 order by rowid"_s);
    for (qint64 row = 1; rows.step(); ++row) {
        constexpr double largest = 15;
        const runtime::Value id = rows.value(0);
        if (!id.isNumber() || id.toDouble() < 0 || id.toDouble() > largest)
            unused.add(row, u"ID"_s, id.text());
    }
    unused.tell(findings);
}

} // namespace

void findFaults(database::Connection& library, std::vector<Finding>& findings)
{
    const database::ReadBatch reading(library);
    findUnknownSubjects(library, findings);
    const QSet<qint64> students = findStudentFaults(library, findings);
    const ListedExams exams(library);
    const QSet<ExamKey> taken = findScoreFaults(library, exams, students, findings);
    exams.tell(taken, findings);
    findFormulaFaults(library, exams.columns(), findings);
    findSettingFaults(library, findings);
    findEmptySettings(library, findings);
    findColorFaults(library, findings);
}

} // namespace oldlibraries
