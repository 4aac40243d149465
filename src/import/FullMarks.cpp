#include "import/FullMarks.h"

#include <cmath>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/TextFile.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Trap;

FullMarks::FullMarks(ImportState& state, const runtime::AppPaths& paths)
    : m_state(state), m_paths(paths)
{
}

void FullMarks::load()
{
    const Trap trap{" - Private Sub Form_Load/FormShuRuMF"};
    QStringList lines;
    runtime::ReadTxtSet(m_paths.dataFile(u"满分.txt"_s), lines);
    trap([&] {
        marks = grid::FlexGrid();
        marks.setRowHeight(-1, 300);
        marks.setColAlignment(-1, 1);
        marks.setTextMatrix(0, 0, u"科目"_s);
        marks.setTextMatrix(0, 1, u"满分"_s);
        marks.setRows(int(m_state.KMImport.size()) + 1);
        for (int row = 1; row < marks.Rows(); ++row) {
            const QString& subject = m_state.KMImport[size_t(row - 1)].KMName;
            marks.setTextMatrix(row, 0, subject);
            marks.setTextMatrix(row, 1, defaultMark(lines, subject));
        }
    });
}

QString FullMarks::defaultMark(const QStringList& lines, const QString& subject)
{
    const QString key = subject + u'=';
    QString mark;
    for (const QString& line : lines) {
        if (line.contains(key))
            mark = line.mid(key.size());
    }
    return mark;
}

void FullMarks::setText(int row, const QString& text)
{
    const Trap trap{" - Private Sub Text1_Change/FormShuRuMF"};
    trap([&] { marks.setTextMatrix(row, 1, text); });
}

bool FullMarks::storeMark(int row)
{
    const QString& text = marks.TextMatrix(row, 1);
    const double mark = runtime::Val(text);
    if (!(float(mark) > 0)) {
        runtime::warn(text + u"成绩未设置正确的成绩！"_s);
        return false;
    }
    const Trap trap{" - Private Sub Command1_Click/FormShuRuMF"};
    return trap([&] {
        const auto full = float(mark);
        if (!std::isfinite(full))
            throw runtime::Error(u"满分“%1”太大，没有存入。"_s.arg(text));
        m_state.KMImport[size_t(row - 1)].KMFull = full;
    });
}

std::optional<int> FullMarks::accept()
{
    std::optional<int> refused;
    for (int row = 1; row < marks.Rows(); ++row) {
        if (!storeMark(row))
            refused = row;
    }
    return refused;
}

QStringList FullMarks::openSubjects() const
{
    QStringList subjects;
    for (const ImportSubject& subject : m_state.KMImport) {
        if (!(subject.KMFull > 0))
            subjects.append(subject.KMName);
    }
    return subjects;
}

bool FullMarks::mayLeave() const
{
    const QStringList subjects = openSubjects();
    if (subjects.isEmpty())
        return true;
    const QString question = u"还有 %1 个科目没有确定满分（%2）。\n\n现在关闭，这些科目的满分就是 "
                             u"0：大于 0 的成绩都会判为"
                             "超过总分，考试里也没有这些满分。"_s.arg(
                                 QString::number(subjects.size()), subjects.join(u'、'));
    return runtime::choose({.text = question, .buttons = {u"返回"_s, u"继续"_s}, .safe = 0}) == 1;
}

bool FullMarks::isFullMark(const QString& text)
{
    const auto mark = float(runtime::Val(text));
    return mark > 0 && std::isfinite(mark);
}

void FullMarks::saveDefaults()
{
    const Trap trap{" - Private Sub Command2_Click/FormShuRuMF"};
    trap([&] {
        QString lines;
        for (int row = 1; row < marks.Rows(); ++row) {
            const QString& subject = marks.TextMatrix(row, 0);
            if (!subject.isEmpty())
                lines += subject + u'=' + marks.TextMatrix(row, 1) + u'\n';
        }
        runtime::writeTextFile(m_paths.dataFile(u"满分.txt"_s), lines);
    });
}

} // namespace importing
