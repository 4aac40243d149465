#include "individual/paint/ClassCharts.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

#include "individual/paint/ChartFiles.h"
#include "individual/paint/StudentPage.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/UnfinishedFile.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

constexpr double pictureDotsPerInch = 120;

class ClassExport
{
public:
    ClassExport(library::ScoreLibrary& scores, const ClassChartsRequest& request,
                runtime::Progress& progress)
        : m_scores(scores), m_request(request), m_progress(progress)
    {
    }

    /// Writes all; false, after the message, if it was not to be or failed.
    bool run(const QString& target);
    /// What was written.
    const QStringList& files() const { return m_files; }

private:
    // Both give false if the user did not want it, and throw runtime::Error.
    bool writePdf(const QString& path);
    bool writePictures(const QString& folder);
    void writePicture(const ClassStudent& student, const QString& path);
    QString whatStays() const;
    StudentPage page(const ClassStudent& student) const
    {
        return StudentPage(m_scores, m_request, student);
    }
    /// Tells which student comes; false once the user pressed 取消.
    bool advance(size_t student) const;
    bool paintPages(QPdfWriter& writer) const;
    bool mayReplace(const QDir& folder, const QStringList& names) const;

    library::ScoreLibrary& m_scores;
    const ClassChartsRequest& m_request;
    runtime::Progress& m_progress;
    std::vector<ClassStudent> m_students;
    QStringList m_files;
};

bool ClassExport::advance(size_t student) const
{
    m_progress.report(u"正在导出分析图："_s + m_students[student].name, int(student),
                      int(m_students.size()));
    return !m_progress.cancelled();
}

bool ClassExport::paintPages(QPdfWriter& writer) const
{
    QPainter painter;
    for (size_t i = 0; i < m_students.size(); ++i) {
        if (!advance(i))
            return false;
        const StudentPage student = page(m_students[i]);
        if (i == 0 ? !painter.begin(&writer) : !writer.newPage())
            throw runtime::Error(u"PDF文件的页面无法生成。"_s);
        student.paint(painter, dotsOfTwip(pdfDotsPerInch), QGuiApplication::font());
    }
    return painter.end();
}

bool ClassExport::writePdf(const QString& path)
{
    // Found out before the work, not behind it.
    runtime::UnfinishedFile file(path);
    runtime::checkReplaceable(path);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(pdfDotsPerInch);
    writer.setTitle(runtime::doubleText(m_request.classNumber) + u" 班分析图"_s);
    writer.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF()));
    if (!paintPages(writer)) {
        m_progress.finish();
        runtime::MsgBox(u"已经取消。没有导出PDF文件。"_s, u"提示"_s);
        return false;
    }
    file.write(buffer.data());
    file.replace(path, path);
    m_files.append(path);
    return true;
}

bool ClassExport::mayReplace(const QDir& folder, const QStringList& names) const
{
    const auto old = std::count_if(names.begin(), names.end(),
                                   [&](const QString& name) { return folder.exists(name); });
    if (old == 0)
        return true;
    return runtime::choose(
               {u"文件夹“%1”里已有 %2 张同名的图片，是否覆盖？"_s.arg(folder.path()).arg(old),
                {u"覆盖"_s, u"取消"_s},
                1,
                u"是否覆盖"_s})
           == 0;
}

bool ClassExport::writePictures(const QString& folder)
{
    const QDir place(folder);
    if (!place.mkpath(u"."_s))
        throw runtime::Error(u"不能建立文件夹“%1”。"_s.arg(folder));
    const QStringList names = pictureNames(m_request.classNumber, m_students);
    if (!mayReplace(place, names))
        return false;
    for (size_t i = 0; i < m_students.size(); ++i) {
        if (!advance(i)) {
            m_progress.finish();
            runtime::MsgBox(u"已经取消。"_s + whatStays(), u"提示"_s);
            return false;
        }
        writePicture(m_students[i], place.absoluteFilePath(names[qsizetype(i)]));
    }
    return true;
}

void ClassExport::writePicture(const ClassStudent& student, const QString& path)
{
    const StudentPage painted = page(student);
    const auto paint = [&](QPainter& painter, double scale) {
        painted.paint(painter, scale, QGuiApplication::font());
    };
    writeWhole(path, pictureBytes({StudentPage::width, StudentPage::height}, pictureDotsPerInch,
                                  "png", paint));
    m_files.append(path);
}

QString ClassExport::whatStays() const
{
    return m_files.isEmpty() ? u"没有导出图片。"_s
                             : u"已导出的 %1 张图片保留。"_s.arg(m_files.size());
}

bool ClassExport::run(const QString& target)
{
    try {
        m_students = studentsOfClass(m_scores, m_request.classNumber);
        if (m_students.empty())
            throw runtime::Error(
                u"%1 班没有学生。"_s.arg(runtime::doubleText(m_request.classNumber)));
        return isPdf(target) ? writePdf(target) : writePictures(target);
    } catch (const runtime::Error& error) {
        m_progress.finish();
        runtime::warn(error.description() + u'\n'
                      + (isPdf(target) ? u"没有导出PDF文件。"_s : whatStays()));
        return false;
    }
}

} // namespace

ClassChartsResult exportClassCharts(library::ScoreLibrary& scores,
                                    const ClassChartsRequest& request, const QString& target,
                                    runtime::Progress& progress)
{
    ClassExport work(scores, request, progress);
    const bool isComplete = work.run(target);
    progress.finish();
    if (isComplete)
        runtime::MsgBox(u"导出完成！"_s);
    return {isComplete, work.files()};
}

bool isPdf(const QString& path)
{
    return path.endsWith(u".pdf"_s, Qt::CaseInsensitive);
}

} // namespace individual
