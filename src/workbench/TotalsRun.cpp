#include "workbench/TotalsRun.h"

#include <QTime>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"

namespace workbench {

using namespace Qt::StringLiterals;
using runtime::Progress;
using runtime::Trap;
using scoring::Scoring;

namespace {

QString timeOfDay()
{
    return QTime::currentTime().toString(u"HH:mm:ss"_s);
}

} // namespace

void computeTotals(const QStringList& exams, Scoring& scoring, Progress& progress)
{
    const Trap trap{" - Private Sub CommandZF_Click/FormKaoShi"};
    const QString begin = timeOfDay();
    for (int i = 0; i < exams.size() && !progress.cancelled(); ++i) {
        // Counts exams, whatever part of one is done: even a large one takes a fraction of a
        // second.
        runtime::PartProgress one(progress, [&](const QString& text, int, int) {
            progress.report(text, i, int(exams.size()));
        });
        trap([&] { scoring.score(exams[i], one); });
    }
    progress.finish();
    if (!progress.cancelled())
        runtime::MsgBox(u"计算总分 完成！"_s + begin + u"\n"_s + timeOfDay());
}

void rankExams(const QStringList& exams, Scoring& scoring, Progress& progress)
{
    const Trap trap{" - Sub Command_Click/FormKaoShi"};
    for (int i = 0; i < exams.size() && !progress.cancelled(); ++i) {
        progress.report(exams[i], i, int(exams.size()));
        trap([&] { scoring.PanNJBjMC(exams[i]); });
    }
    progress.finish();
}

} // namespace workbench
