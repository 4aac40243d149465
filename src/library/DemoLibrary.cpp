#include "library/DemoLibrary.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/database/Error.h"
#include "platform/database/FileCheck.h"
#include "platform/runtime/Dialogs.h"
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
    database::checkHeader(path);
    return file.readAll();
}

/// Why a file is no library, or not a whole one; empty for one, and for one that cannot be read
/// now.
QString faultOf(const QString& path)
{
    try {
        database::checkHeader(path);
    } catch (const database::Error& error) {
        if (error.failure() == database::Failure::NoLibrary
            || error.failure() == database::Failure::Damaged)
            return error.description();
    }
    return {};
}

void copyShipped(const QString& shipped, const QString& own)
{
    const QByteArray bytes = shippedBytes(shipped);
    const QString folder = QFileInfo(own).path();
    if (!QDir().mkpath(folder))
        throw runtime::Error(u"无法建立文件夹 %1"_s.arg(folder));
    runtime::UnfinishedFile file(own);
    file.write(bytes);
    // A second program that makes it at the same moment may have been faster.
    file.takeName(own, own);
}

} // namespace

QString shippedDemoLibrary(const runtime::AppPaths& paths)
{
    return QFileInfo(paths.templateFile()).path() + u"/示范成绩库.CJK"_s;
}

QString ownDemoLibrary(const runtime::AppPaths& paths, const QString& documents)
{
    const QString shipped = shippedDemoLibrary(paths);
    const QFileInfo shippedFile(shipped);
    const QString folder = documents + u"/云杉学业册/"_s;
    QString own = folder + shippedFile.fileName();
    QString fault;
    for (int number = 2; QFileInfo::exists(own); ++number) {
        const QString why = faultOf(own);
        if (why.isEmpty())
            return own;
        fault = why;
        own = folder
              + u"%1 %2.%3"_s.arg(shippedFile.completeBaseName(), QString::number(number),
                                  shippedFile.suffix());
    }
    copyShipped(shipped, own);
    if (!fault.isEmpty())
        runtime::MsgBox(u"%1\n另建了一份示范成绩库：%2"_s.arg(fault, own));
    return own;
}

} // namespace library
