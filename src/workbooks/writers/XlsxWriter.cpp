#include "workbooks/writers/XlsxWriter.h"

#include <algorithm>
#include <deque>
#include <memory>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/runtime/Error.h"
#include "platform/runtime/QuietLibraries.h"
#include "platform/runtime/UnfinishedFile.h"
#include "workbooks/writers/WriterText.h"
#include "workbooks/writers/XlsxDrawings.h"
#include "workbooks/writers/XlsxPackage.h"
#include "workbooks/writers/XlsxSheetWriter.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

[[noreturn]] void refuse(const QString& path, const QString& reason)
{
    throw runtime::Error(u"无法保存 "_s + path + u"："_s + reason);
}

struct FreeBook
{
    void operator()(lxw_workbook* book) const { lxw_workbook_free(book); }
};

/// A hidden sheet cannot be in front, and one sheet at least must be seen.
const Worksheet* frontSheet(const Workbook& book, const std::vector<const Worksheet*>& sheets)
{
    const auto isSeen = [](const Worksheet* sheet) {
        return sheet->visibility() == Visibility::Visible;
    };
    const Worksheet* active = &book.activeSheet();
    const auto seen = std::find_if(sheets.begin(), sheets.end(), isSeen);
    return isSeen(active) || seen == sheets.end() ? active : *seen;
}

/// What the library does not write of a workbook.
struct Additions
{
    std::deque<SheetContent> contents;
    XlsxDrawings drawings;
};

Additions writeSheets(const Workbook& book, lxw_workbook* target)
{
    const std::vector<const Worksheet*> sheets = book.sheets();
    Additions additions;
    if (sheets.empty())
        return additions;
    QStringList names;
    for (const Worksheet* sheet : sheets)
        names.append(sheet->Name());
    names = legalSheetNames(names);
    const Worksheet* front = frontSheet(book, sheets);
    XlsxFormats formats(target);
    SharedTexts texts(target);
    for (size_t i = 0; i < sheets.size(); ++i) {
        lxw_worksheet* page =
            workbook_add_worksheet(target, names[qsizetype(i)].toUtf8().constData());
        if (page == nullptr)
            throw runtime::Error(u"无法写入工作表“%1”。"_s.arg(sheets[i]->Name()));
        if (sheets[i] == front)
            worksheet_activate(page);
        else if (sheets[i]->visibility() != Visibility::Visible)
            worksheet_hide(page);
        SheetContent& content = additions.contents.emplace_back();
        content = XlsxSheetWriter(*sheets[i], page, formats, texts).write();
        content.drawing = additions.drawings.add(*sheets[i], i + 1, names[qsizetype(i)]);
    }
    return additions;
}

/// Where the path leads to.
QString placeOf(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir())
        refuse(path, u"这是一个文件夹。"_s);
    if (!info.dir().exists())
        refuse(path, u"文件夹不存在。"_s);
    if (info.exists() && !info.isWritable())
        refuse(path, u"原有的文件是只读的。"_s);
    return info.exists() ? info.canonicalFilePath() : path;
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What the file of the workbook shall hold; nothing if it could not be made.
QByteArray packageOf(const Workbook& book, const runtime::UnfinishedFile& scratch)
{
    const QByteArray name = QFile::encodeName(scratch.path());
    std::unique_ptr<lxw_workbook, FreeBook> target(workbook_new(name.constData()));
    if (target == nullptr)
        throw runtime::Error(u"内存不足。"_s);
    Additions additions = writeSheets(book, target.get());
    if (workbook_close(target.release()) != LXW_NO_ERROR || !isWhole(name))
        return {};
    return withContents(bytesOf(scratch.path()), additions.contents, additions.drawings.take());
}

} // namespace

void writeXlsx(const Workbook& book, const QString& path)
{
    const QString place = placeOf(path);
    runtime::removeLeftOvers(place);
    // It prints what it is about to return as an error.
    const runtime::QuietStderr quiet;
    const QByteArray package = packageOf(book, runtime::UnfinishedFile(place));
    runtime::UnfinishedFile file(place);
    file.write(package);
    if (package.isEmpty() || bytesOf(file.path()) != package)
        refuse(path, u"写文件时出错，磁盘可能已满或已断开。"_s);
    file.replace(place, place);
}

} // namespace excel
