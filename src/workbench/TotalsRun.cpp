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

/// Counts exams, whatever part of one is done: even a large one takes a fraction of a second.
class ExamProgress : public Progress
{
public:
    ExamProgress(Progress& run, int exam, int exams) : m_run(run), m_exam(exam), m_exams(exams) {}

    void report(const QString& text, int, int) override { m_run.report(text, m_exam, m_exams); }
    void finish() override {}
    bool cancelled() const override { return m_run.cancelled(); }

private:
    Progress& m_run;
    int m_exam;
    int m_exams;
};

QString timeOfDay()
{
    return QTime::currentTime().toString(u"HH:mm:ss");
}

} // namespace

void computeTotals(const QStringList& exams, Scoring& scoring, Progress& progress)
{
    const Trap trap{" - Private Sub CommandZF_Click/FormKaoShi"};
    const QString begin = timeOfDay();
    for (int i = 0; i < exams.size() && !progress.cancelled(); ++i) {
        ExamProgress share(progress, i, int(exams.size()));
        share.report(u"计算总分："_s + exams[i] + u"..."_s, 0, 1);
        trap([&] { scoring.score(exams[i], share); });
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
