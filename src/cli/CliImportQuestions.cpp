#include "cli/CliImportQuestions.h"

#include "cli/Arguments.h"
#include "cli/CliDialogs.h"
#include "import/ErrorList.h"
#include "import/FullMarks.h"
#include "platform/runtime/Numbers.h"

namespace cli {

using namespace Qt::StringLiterals;

CliImportQuestions::CliImportQuestions(const runtime::AppPaths& paths, const QStringList& marks)
    : m_paths(paths)
{
    for (const QString& text : marks) {
        const QString mark = text.section(u'=', 1);
        if (!importing::FullMarks::isFullMark(mark))
            throw UsageError(u"满分不正确：%1（应为 科目=满分）"_s.arg(text));
        m_fullMarks.insert(text.section(u'=', 0, 0), mark);
    }
}

void CliImportQuestions::fullMarks(importing::ImportState& state, const QString& label)
{
    importing::FullMarks entry(state, m_paths);
    entry.load();
    QStringList shown;
    QStringList unused = m_fullMarks.keys();
    for (int row = 1; row < entry.marks.Rows(); ++row) {
        const QString subject = entry.marks.TextMatrix(row, 0);
        unused.removeAll(subject);
        if (m_fullMarks.contains(subject))
            entry.setText(row, m_fullMarks.value(subject));
        if (!importing::FullMarks::isFullMark(entry.marks.TextMatrix(row, 1)))
            throw UsageError(u"科目“%1”没有满分，请用 --full-marks 给出。"_s.arg(subject));
        shown.append(subject + u'=' + entry.marks.TextMatrix(row, 1));
    }
    if (!unused.isEmpty())
        printError(u"数据表里没有科目“%1”，为它给出的满分不起作用。"_s.arg(unused.join(u"”、“"_s)));
    printError(label + u"：满分 "_s + shown.join(u'，'));
    entry.accept();
}

QHash<QString, float> CliImportQuestions::givenMarks() const
{
    QHash<QString, float> marks;
    for (auto mark = m_fullMarks.begin(); mark != m_fullMarks.end(); ++mark)
        marks.insert(mark.key(), float(runtime::Val(mark.value())));
    return marks;
}

void CliImportQuestions::errorList(importing::ImportState& state)
{
    printError(importing::ErrorList(state).countText());
    for (int row = 1; row < state.errors.Rows(); ++row) {
        QStringList cells;
        for (int column = 0; column < 6; ++column)
            cells.append(state.errors.TextMatrix(row, column));
        printError(cells.join(u'\t'));
    }
}

} // namespace cli
