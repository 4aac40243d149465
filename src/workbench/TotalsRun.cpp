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

/// The share that one exam has in the progress of the run.
class ExamProgress : public Progress
{
public:
    ExamProgress(Progress& run, int exam, int exams) : m_run(run), m_exam(exam), m_exams(exams) {}

    void report(const QString& text, int done, int total) override
    {
        constexpr int share = 100;
        const int part = total > 0 ? share * done / total : 0;
        m_run.report(text, m_exam * share + part, m_exams * share);
    }
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

void CommandZF_Click(const Selection& selection, Scoring& scoring, Progress& progress)
{
    const Trap trap{" - Private Sub CommandZF_Click/FormKaoShi"};
    const QString begin = timeOfDay();
    const QStringList exams = selection.ListKSMC.selectedTexts();
    for (int i = 0; i < exams.size() && !progress.cancelled(); ++i) {
        ExamProgress share(progress, i, int(exams.size()));
        share.report(u"计算总分："_s + exams[i] + u"..."_s, 0, 1);
        trap([&] { scoring.score(exams[i], share); });
    }
    if (progress.cancelled())
        return;
    progress.report({}, 0, 0);
    runtime::MsgBox(u"计算总分 完成！"_s + begin + u"\n"_s + timeOfDay());
}

void Command_Click(const Selection& selection, Scoring& scoring, Progress& progress)
{
    const Trap trap{" - Sub Command_Click/FormKaoShi"};
    const ChoiceList& exams = selection.ListKSMC;
    for (int i = 0; i < exams.count() && !progress.cancelled(); ++i) {
        const QString& exam = exams.items[size_t(i)].text;
        progress.report(exam, i, exams.count());
        trap([&] { scoring.PanNJBjMC(exam); });
    }
}

} // namespace workbench
