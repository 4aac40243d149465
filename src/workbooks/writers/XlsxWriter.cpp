#include "workbooks/writers/XlsxWriter.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include "platform/runtime/Error.h"
#include "platform/runtime/QuietLibraries.h"
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

/// A new file beside the one that it shall replace; gone again unless it was put in place.
class NewFile
{
public:
    explicit NewFile(const QString& path);

    QByteArray name() const { return QFile::encodeName(m_file.fileName()); }
    QByteArray read() const;
    /// False if the file does not hold just these bytes then, or they are none.
    bool replace(const QByteArray& content);
    void putInPlace();

private:
    void keepPermissions();

    const QString m_path;
    QString m_place; // where the path leads to
    QTemporaryFile m_file;
};

NewFile::NewFile(const QString& path) : m_path(path), m_place(path)
{
    const QFileInfo info(path);
    if (info.isDir())
        refuse(path, u"这是一个文件夹。"_s);
    if (!info.dir().exists())
        refuse(path, u"文件夹不存在。"_s);
    if (info.exists()) {
        if (!info.isWritable())
            refuse(path, u"原有的文件是只读的。"_s);
        m_place = info.canonicalFilePath();
    }
    m_file.setFileTemplate(QFileInfo(m_place).absolutePath() + u"/.yunshan-XXXXXX.xlsx"_s);
    if (!m_file.open())
        refuse(path, u"不能在这个文件夹中写文件，请检查权限和磁盘空间。"_s);
}

QByteArray NewFile::read() const
{
    QFile file(m_file.fileName());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool NewFile::replace(const QByteArray& content)
{
    return !content.isEmpty() && m_file.resize(0) && m_file.seek(0)
           && m_file.write(content) == content.size() && m_file.flush() && read() == content;
}

void NewFile::keepPermissions()
{
    if (QFile::exists(m_place)) {
        m_file.setPermissions(QFile::permissions(m_place));
        return;
    }
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(m_file.handle(), 0666 & ~mask);
}

void NewFile::putInPlace()
{
    keepPermissions();
    const bool isOnDisk = fsync(m_file.handle()) == 0;
    if (!isOnDisk || std::rename(name().constData(), QFile::encodeName(m_place).constData()) != 0)
        refuse(m_path, u"写文件时出错，磁盘可能已满或已断开。"_s);
    m_file.setAutoRemove(false);
}

} // namespace

void writeXlsx(const Workbook& book, const QString& path)
{
    NewFile file(path);
    // It prints what it is about to return as an error.
    const runtime::QuietStderr quiet;
    std::unique_ptr<lxw_workbook, FreeBook> target(workbook_new(file.name().constData()));
    if (target == nullptr)
        refuse(path, u"内存不足。"_s);
    Additions additions = writeSheets(book, target.get());
    if (workbook_close(target.release()) != LXW_NO_ERROR || !isWhole(file.name())
        || !file.replace(withContents(file.read(), additions.contents, additions.drawings.take())))
        refuse(path, u"写文件时出错，磁盘可能已满或已断开。"_s);
    file.putInPlace();
}

} // namespace excel
