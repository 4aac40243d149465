#include "import/preview/PreviewMarks.h"

#include <limits>
#include <map>

#include "import/FullMarks.h"
#include "platform/database/SqlPieces.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;

namespace {

using Marks = QHash<QString, float>;

/// Those of the exam's row of the stream, else of its first row.
Marks marksOfExam(database::Connection& connection, const QString& exam, const QString& stream,
                  const std::vector<ImportSubject>& subjects)
{
    Marks marks;
    for (const ImportSubject& subject : subjects) {
        database::Statement row(
            connection, database::sqlWith(u"select %1 from 考试名称表 where 考试名称=? "
                                          "order by 科类 is not ?, 考试编号, rowid limit 1"_s,
                                          {database::SqlPiece::names({subject.KMName})}));
        row.bind({exam, stream});
        if (row.step() && row.number(0) > 0)
            marks.insert(subject.KMName, float(row.number(0)));
    }
    return marks;
}

Marks defaultMarks(const runtime::AppPaths& paths, const std::vector<ImportSubject>& subjects)
{
    ImportState state;
    state.KMImport = subjects;
    FullMarks offered(state, paths);
    offered.load();
    Marks marks;
    for (int row = 1; row < offered.marks.Rows(); ++row) {
        const QString& text = offered.marks.TextMatrix(row, 1);
        if (FullMarks::isFullMark(text))
            marks.insert(offered.marks.TextMatrix(row, 0), float(runtime::Val(text)));
    }
    return marks;
}

} // namespace

PreviewMarks::PreviewMarks(library::ScoreLibrary& scoreLibrary, const ExamPreviewRequest& request,
                           const QString& stream, std::vector<ImportSubject> subjects)
    : m_subjects(std::move(subjects))
{
    for (ImportSubject& subject : m_subjects)
        subject.KMFull = std::numeric_limits<float>::infinity();
    const QString& exam = request.import.examName;
    take(request.fullMarks, u"给出的"_s);
    take(marksOfExam(scoreLibrary.Conn, exam, stream, m_subjects), u"考试“%1”里的"_s.arg(exam));
    take(defaultMarks(scoreLibrary.paths(), m_subjects), u"默认的"_s);
}

void PreviewMarks::take(const Marks& marks, const QString& source)
{
    for (ImportSubject& subject : m_subjects) {
        if (!marks.contains(subject.KMName) || m_sources.contains(subject.KMName))
            continue;
        subject.KMFull = marks.value(subject.KMName);
        m_sources.insert(subject.KMName, source);
    }
}

QString PreviewMarks::told(const ImportSubject& subject) const
{
    return u"%1满分 %2"_s.arg(m_sources.value(subject.KMName), runtime::singleText(subject.KMFull));
}

QString PreviewMarks::note() const
{
    std::map<QString, QStringList> known;
    QStringList unknown;
    for (const ImportSubject& subject : m_subjects) {
        if (m_sources.contains(subject.KMName))
            known[m_sources.value(subject.KMName)].append(subject.KMName + u' '
                                                          + runtime::singleText(subject.KMFull));
        else
            unknown.append(subject.KMName);
    }
    QString text = u"满分要到导入时才输入"_s;
    for (const auto& [source, marks] : known)
        text += u"；先用%1：%2"_s.arg(source, marks.join(u'、'));
    if (!unknown.isEmpty())
        text += u"；%1没有满分，没有检查是否超过"_s.arg(unknown.join(u'、'));
    return text + u'。';
}

} // namespace importing
