#include "workbooks/ui/WorkbookOutput.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileErrors.h"
#include "platform/widgets/ScreenProgress.h"
#include "workbooks/model/Points.h"
#include "workbooks/ui/SheetPages.h"
#include "workbooks/writers/XlsxWriter.h"

namespace excel {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::Buttons;
using runtime::FileMode;
using runtime::Icon;

namespace {

constexpr int pdfDotsPerInch = 600;

const QString errorTitle = u"错误"_s;

void complain(const QString& text)
{
    runtime::MsgBox(text, errorTitle, Buttons::Ok, Icon::Critical);
}

/// The name with `ending`, in place of an older ending of the kind or behind the name.
QString withEnding(const QString& file, const QString& ending, const QString& formerEnding)
{
    if (file.isEmpty() || file.endsWith(ending, Qt::CaseInsensitive))
        return file;
    if (!formerEnding.isEmpty() && file.endsWith(formerEnding, Qt::CaseInsensitive))
        return file.chopped(formerEnding.size()) + ending;
    return file + ending;
}

/// The file to write; empty if the user gave up. A name that the ending changes is asked about too.
QString chooseTarget(const QString& filter, const QString& ending, const QString& formerEnding)
{
    const QString chosen = runtime::ShowFileDialog(filter, FileMode::Save);
    QString file = withEnding(chosen, ending, formerEnding);
    if (file == chosen || !QFileInfo::exists(file))
        return file;
    return runtime::mayOverwrite() ? file : QString();
}

enum class Printed { Done, Failed, Cancelled };

/// Paints the pages `first` to `last`, counted from 0.
template <class Device>
Printed paintPages(SheetPages& pages, Device& device, int first, int last, QWidget* owner)
{
    QPainter painter;
    if (!painter.begin(&device))
        return Printed::Failed;
    widgets::ScreenProgress progress(owner);
    const double scale = device.logicalDpiX() / pointsPerInch;
    for (int page = first; page <= last; ++page) {
        progress.report(u"正在生成页面..."_s, page - first, last - first + 1);
        if (progress.cancelled()) {
            // Ending the painter would send what there is to the printer.
            if constexpr (std::is_same_v<Device, QPrinter>)
                device.abort();
            return Printed::Cancelled;
        }
        if (page > first && !device.newPage())
            return Printed::Failed;
        pages.paint(painter, page, scale);
    }
    return painter.end() ? Printed::Done : Printed::Failed;
}

SheetPages pagesFor(const Worksheet& sheet, const QPageLayout& layout)
{
    return SheetPages(sheet, layout.paintRect(QPageLayout::Point).size());
}

// More pages than this are seldom meant: a stray cell at the sheet's far end makes millions.
constexpr int manyPages = 500;

bool isPrintable(const SheetPages& pages)
{
    if (pages.count() == 0)
        runtime::MsgBox(u"工作表中没有可以打印的内容。"_s, u"提示"_s);
    if (pages.count() <= manyPages)
        return pages.count() > 0;
    return runtime::MsgBox(u"工作表共有 %1 页，是否继续？"_s.arg(pages.count()), u"打印"_s,
                           Buttons::YesNo, Icon::Question)
           == Answer::Yes;
}

void writePdf(SheetPages& pages, const QPageLayout& layout, const QString& file,
              const QString& title, QWidget* owner)
{
    QSaveFile target(file);
    Printed result = Printed::Failed;
    if (target.open(QIODevice::WriteOnly)) {
        QPdfWriter writer(&target);
        writer.setResolution(pdfDotsPerInch);
        writer.setPageLayout(layout);
        writer.setTitle(title);
        result = paintPages(pages, writer, 0, pages.count() - 1, owner);
    }
    if (result == Printed::Cancelled)
        return;
    if (result == Printed::Failed || !target.commit())
        complain(u"PDF文件没有导出：\n%1\n%2"_s.arg(file, runtime::fileErrorText(target.error())));
}

bool showPrintDialog(QPrinter& printer, int pages, QWidget* owner)
{
    QPrintDialog dialog(&printer, owner);
    dialog.setMinMax(1, pages);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace

Desktop::Desktop()
    : openFile(&QDesktopServices::openUrl),
      hasPrinter([] { return !QPrinterInfo::availablePrinterNames().isEmpty(); }),
      choosePrinter(&showPrintDialog)
{
}

bool mayLose(const Workbook& book)
{
    const QStringList lost = book.notKept();
    if (lost.isEmpty())
        return true;
    const QString text = u"原文件中的下列内容不会保存到新文件中：\n%1。\n原文件不变。"_s;
    return runtime::choose(
               {text.arg(lost.join(u'、')), {u"继续另存(&S)"_s, u"取消"_s}, 1, u"另存为"_s})
           == 0;
}

bool saveWorkbookAs(Workbook& book, const QString& source)
{
    const QString file = chooseTarget(u"EXCEL文件|*.xlsx"_s, u".xlsx"_s, u".xls"_s);
    if (file.isEmpty())
        return false;
    if (!source.isEmpty() && QFileInfo(file) == QFileInfo(source)) {
        complain(u"不能覆盖工作簿的原文件，请换一个文件名。"_s);
        return false;
    }
    try {
        book.SaveAs(file);
    } catch (const runtime::Error& error) {
        complain(u"工作簿没有保存：\n"_s + error.description());
        return false;
    }
    return true;
}

void exportPdf(const Worksheet& sheet, QWidget* owner)
{
    const QPageLayout layout = pageLayoutOf(sheet);
    SheetPages pages = pagesFor(sheet, layout);
    if (!isPrintable(pages))
        return;
    const QString file = chooseTarget(u"PDF文件|*.pdf"_s, u".pdf"_s, {});
    if (!file.isEmpty())
        writePdf(pages, layout, file, sheet.Name(), owner);
}

void printSheet(const Worksheet& sheet, QWidget* owner, const Desktop& desktop)
{
    if (!desktop.hasPrinter()) {
        if (runtime::MsgBox(u"这台计算机上没有打印机。是否导出为PDF文件？"_s, u"打印"_s,
                            Buttons::YesNo, Icon::Question)
            == Answer::Yes)
            exportPdf(sheet, owner);
        return;
    }
    if (!isPrintable(pagesFor(sheet, pageLayoutOf(sheet))))
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(pageLayoutOf(sheet));
    printer.setDocName(sheet.Name());
    if (!desktop.choosePrinter(printer, pagesFor(sheet, printer.pageLayout()).count(), owner))
        return;
    // Another paper may have been chosen in the dialog.
    SheetPages pages = pagesFor(sheet, printer.pageLayout());
    const bool some = printer.printRange() == QPrinter::PageRange;
    const int first = some ? std::clamp(printer.fromPage(), 1, pages.count()) - 1 : 0;
    const int last =
        some ? std::clamp(printer.toPage(), first + 1, pages.count()) - 1 : pages.count() - 1;
    if (paintPages(pages, printer, first, last, owner) == Printed::Failed)
        complain(u"打印没有成功。请检查打印机“%1”。"_s.arg(printer.printerName()));
}

namespace {

QString writeCopy(const Workbook& book, const QString& source, const QString& name,
                  const QString& folder)
{
    if (QFileInfo::exists(source)) {
        QString copy = folder + u'/' + QFileInfo(source).fileName();
        QFile::remove(copy);
        if (QFile::copy(source, copy))
            return copy;
    }
    QString copy = folder + u'/' + withEnding(name, u".xlsx"_s, u".xls"_s);
    QFile::remove(copy);
    writeXlsx(book, copy);
    return copy;
}

} // namespace

void openOutside(const Workbook& book, const QString& source, const QString& name,
                 const QString& folder, const Desktop& desktop)
{
    try {
        const QString copy = writeCopy(book, source, name, folder);
        // Read-only, so that the other program asks for a place of its own to save to.
        QFile::setPermissions(copy, QFile::ReadOwner);
        if (!desktop.openFile(QUrl::fromLocalFile(copy)))
            complain(u"没有找到可以打开工作簿的电子表格程序。"_s);
    } catch (const runtime::Error& error) {
        complain(u"工作簿没有打开：\n"_s + error.description());
    }
}

} // namespace excel
