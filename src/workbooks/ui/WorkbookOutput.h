#pragma once

#include <functional>

#include <QUrl>

#include "workbooks/model/Workbook.h"

class QPrinter;
class QWidget;

namespace excel {

/// What a workbook's window uses of the desktop around it. The members can be replaced.
struct Desktop
{
    Desktop();

    /// Opens a file with the program for its kind; false if there is none.
    std::function<bool(const QUrl&)> openFile;
    /// True if there is a printer to print on.
    std::function<bool()> hasPrinter;
    /// Asks for a printer, its paper and the pages; false if the user gave up.
    std::function<bool(QPrinter&, int pages, QWidget* owner)> choosePrinter;
};

/// Tells what a workbook that was read will not keep when it is saved; false if the user gave up.
/// Asks nothing where all is kept.
bool mayLose(const Workbook& book);

/// Asks for a file and saves the workbook there as .xlsx; an ending that says so is put behind the
/// name. `source`, the file that it was read from, is not overwritten, since it can hold more than
/// a Workbook does. False if the user gave up or it failed, which a message tells.
bool saveWorkbookAs(Workbook& book, const QString& source);

/// Asks for a file and writes the sheet there as PDF, with a message when that fails.
void exportPdf(const Worksheet& sheet, QWidget* owner);

/// Prints the sheet after the printer dialog; without any printer, offers a PDF file.
void printSheet(const Worksheet& sheet, QWidget* owner, const Desktop& desktop);

/// Hands a read-only copy in `folder` to the desktop's program for spreadsheets: of the file
/// `source` if there is one, else of what the workbook holds, which is then called `name`.
void openOutside(const Workbook& book, const QString& source, const QString& name,
                 const QString& folder, const Desktop& desktop);

} // namespace excel
