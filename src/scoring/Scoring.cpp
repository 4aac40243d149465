#include "scoring/Scoring.h"

#include "platform/database/Recordset.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"
#include "scoring/Ranks.h"
#include "scoring/StandardScores.h"
#include "scoring/Totals.h"

namespace scoring {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Val;
using runtime::Value;

namespace {

/// An aggregate over the students of one exam and stream that sat a column.
QString aggregateSql(const QString& function, const QString& exam, const QString& column,
                     const QString& stream)
{
    return u"SELECT "_s + function + u"("_s + column + u")  from 成绩表 WHERE "_s + column
           + u" >= 0 and 考试名称='"_s + exam + u"' and 科类='"_s + stream + u"'"_s;
}

} // namespace

void Scoring::GetZtoT()
{
    const Trap trap{" - Sub GetZtoT/Mdl_MDB"};
    trap([&] {
        database::Recordset rows;
        rows.Open(u"SELECT * from 设置表 WHERE 名称='T分'"_s, m_library.Conn);
        const QString setting = rows.Fields(u"设置"_s).Value().text();
        const QStringList pieces = QString(setting).remove(u' ').toLower().split(u"z+"_s);
        if (pieces.size() < 2) {
            runtime::MsgBox(u"T分转换公式设置不正确！"_s, {}, runtime::Buttons::Ok,
                            runtime::Icon::Warning);
            return;
        }
        m_library.settings.TFactor = Val(pieces[0]);
        m_library.settings.TOffset = Val(pieces[1]);
    });
}

double Scoring::mean(const QString& sql, const char* tag)
{
    const Trap trap{tag};
    double found = 0;
    trap([&] {
        database::Recordset rows;
        rows.Open(sql, m_library.Conn);
        found = Val(rows.Fields(0).Value());
    });
    return found;
}

double Scoring::GetPJF(const QString& exam, const QString& column, const QString& stream)
{
    return mean(aggregateSql(u"Avg"_s, exam, column, stream), " - Function GetPJF/Mdl_MDB");
}

double Scoring::GetBJPJF(const QString& exam, const QString& column, const QString& stream,
                         double classNumber)
{
    return mean(aggregateSql(u"Avg"_s, exam, column, stream) + u" and  班级="_s
                    + runtime::doubleText(classNumber),
                " - Function GetBJPJF/Mdl_MDB");
}

Value Scoring::GetBZC(const QString& exam, const QString& column, const QString& stream)
{
    const Trap trap{" - Function GetBZC/Mdl_MDB"};
    Value deviation;
    trap([&] {
        database::Recordset rows;
        rows.Open(aggregateSql(u"stdev"_s, exam, column, stream), m_library.Conn);
        deviation = rows.Fields(0).Value();
    });
    return deviation;
}

void Scoring::Zfen(const QString& exam)
{
    const Trap trap{" - Sub Zfen/Mdl_MDB"};
    trap([&] {
        ExamTables tables(m_library.Conn, exam, m_library.catalogue.AllColumns);
        computeStandardScores(*this, tables);
        tables.write();
    });
}

void Scoring::JiSuanZF(const QString& exam)
{
    const Trap trap{" - Sub JiSuanZF/Mdl_MDB"};
    trap([&] {
        ExamTables tables(m_library.Conn, exam, m_library.catalogue.AllColumns);
        computeTotals(*this, tables);
        tables.write();
    });
}

void Scoring::PanNJBjMC(const QString& exam)
{
    const Trap trap{" - Sub PanNJBjMC/Mdl_MDB"};
    trap([&] {
        ExamTables tables(m_library.Conn, exam, m_library.catalogue.AllColumns);
        computeRanks(*this, tables);
        tables.write();
    });
}

void Scoring::PaiMC(const QString& exam, const QString& stream, double classNumber)
{
    const Trap trap{" - Sub PaiMC/Mdl_MDB"};
    trap([&] {
        ExamTables tables(m_library.Conn, exam, m_library.catalogue.AllColumns);
        computeGroupRanks(*this, tables, stream, classNumber);
        tables.write();
    });
}

bool Scoring::score(const QString& exam, runtime::Progress& progress)
{
    constexpr int steps = 4;
    const QString text = u"计算总分："_s + exam + u"..."_s;
    ExamTables tables(m_library.Conn, exam, m_library.catalogue.AllColumns);
    bool complete = true;
    const auto runStep = [&](int step, const char* tag, const std::function<bool()>& work) {
        progress.report(text, step, steps);
        if (progress.cancelled())
            return false;
        bool done = false;
        Trap{tag}([&] { done = work(); });
        complete = done && complete;
        return true;
    };
    return runStep(0, " - Sub Zfen/Mdl_MDB", [&] { return computeStandardScores(*this, tables); })
           && runStep(1, " - Sub JiSuanZF/Mdl_MDB", [&] { return computeTotals(*this, tables); })
           && runStep(2, " - Sub PanNJBjMC/Mdl_MDB", [&] { return computeRanks(*this, tables); })
           && runStep(3, " - Sub PanNJBjMC/Mdl_MDB",
                      [&] {
                          tables.write();
                          return true;
                      })
           && complete;
}

} // namespace scoring
