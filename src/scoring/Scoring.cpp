#include "scoring/Scoring.h"

#include "platform/runtime/Trap.h"
#include "scoring/Ranks.h"
#include "scoring/StandardScores.h"
#include "scoring/Totals.h"

namespace scoring {

using namespace Qt::StringLiterals;
using runtime::Trap;

void Scoring::Zfen(const QString& exam)
{
    const Trap trap{" - Sub Zfen/Mdl_MDB"};
    trap([&] {
        ExamTables tables(m_library, exam);
        computeStandardScores(m_library, tables);
        tables.write();
    });
}

void Scoring::JiSuanZF(const QString& exam)
{
    const Trap trap{" - Sub JiSuanZF/Mdl_MDB"};
    trap([&] {
        ExamTables tables(m_library, exam);
        computeTotals(m_library, tables);
        tables.write();
    });
}

void Scoring::PanNJBjMC(const QString& exam)
{
    const Trap trap{" - Sub PanNJBjMC/Mdl_MDB"};
    trap([&] {
        ExamTables tables(m_library, exam);
        computeRanks(m_library, tables);
        tables.write();
    });
}

void Scoring::PaiMC(const QString& exam, const QString& stream, double classNumber)
{
    const Trap trap{" - Sub PaiMC/Mdl_MDB"};
    trap([&] {
        ExamTables tables(m_library, exam);
        computeGroupRanks(m_library, tables, stream, classNumber);
        tables.write();
    });
}

bool Scoring::score(const QString& exam, runtime::Progress& progress)
{
    const Trap trap{" - Sub PanNJBjMC/Mdl_MDB"};
    bool complete = false;
    trap([&] {
        ExamTables tables(m_library, exam);
        complete = runSteps(tables, progress);
    });
    return complete;
}

bool Scoring::runSteps(ExamTables& tables, runtime::Progress& progress)
{
    constexpr int steps = 4;
    const QString text = u"计算总分："_s + tables.exam() + u"..."_s;
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
    return runStep(0, " - Sub Zfen/Mdl_MDB",
                   [&] { return computeStandardScores(m_library, tables); })
           && runStep(1, " - Sub JiSuanZF/Mdl_MDB",
                      [&] { return computeTotals(m_library, tables); })
           && runStep(2, " - Sub PanNJBjMC/Mdl_MDB",
                      [&] { return computeRanks(m_library, tables); })
           && runStep(3, " - Sub PanNJBjMC/Mdl_MDB",
                      [&] {
                          tables.write();
                          return true;
                      })
           && complete;
}

} // namespace scoring
