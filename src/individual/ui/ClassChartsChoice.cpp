#include "individual/ui/ClassChartsChoice.h"

#include <QFileInfo>

#include "individual/paint/ClassCharts.h"
#include "platform/runtime/Dialogs.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

/// A PDF file is known by its name's ending.
QString askPdfFile()
{
    QString file = runtime::ShowFileDialog(u"PDF 文件(*.pdf)|*.pdf|"_s, runtime::FileMode::Save);
    if (file.isEmpty() || isPdf(file))
        return file;
    file += u".pdf"_s;
    return !QFileInfo::exists(file) || runtime::mayOverwrite() ? file : QString();
}

} // namespace

QString askClassChartsTarget(const QString& className)
{
    enum { Pdf, Folder, Cancel };
    const runtime::Choice choice{
        u"导出 %1 班全班学生的成绩和分析图。导出成什么？"_s.arg(className),
        {u"一个 PDF 文件，每人一页(&P)"_s, u"文件夹，每人一张图片(&F)"_s, u"取消(&C)"_s},
        Cancel,
        u"导出全班分析图"_s};
    switch (runtime::choose(choice)) {
    case Pdf:
        return askPdfFile();
    case Folder:
        return runtime::OpenDirectoryTV(u"选择存放图片的文件夹"_s);
    default:
        return {};
    }
}

} // namespace individual
