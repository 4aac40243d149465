#include "library/DemoLibrary.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/runtime/Error.h"
#include "platform/runtime/UnfinishedFile.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

QByteArray shippedBytes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw runtime::Error(u"找不到随程序提供的示范成绩库 %1，请重新安装程序。"_s.arg(path));
    return file.readAll();
}

} // namespace

QString shippedDemoLibrary(const runtime::AppPaths& paths)
{
    return QFileInfo(paths.templateFile()).path() + u"/示范成绩库.CJK"_s;
}

QString ownDemoLibrary(const runtime::AppPaths& paths, const QString& documents)
{
    const QString shipped = shippedDemoLibrary(paths);
    const QString folder = documents + u"/云杉学业册"_s;
    QString own = folder + u'/' + QFileInfo(shipped).fileName();
    if (QFileInfo::exists(own))
        return own;
    const QByteArray bytes = shippedBytes(shipped);
    if (!QDir().mkpath(folder))
        throw runtime::Error(u"无法建立文件夹 %1"_s.arg(folder));
    runtime::UnfinishedFile file(own);
    file.write(bytes);
    // A second program that makes it at the same moment may have been faster.
    file.takeName(own, own);
    return own;
}

} // namespace library
