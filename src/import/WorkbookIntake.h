#pragma once

#include <memory>
#include <vector>

#include <QString>
#include <QStringList>

#include "library/LibraryBackup.h"
#include "workbooks/model/Application.h"

namespace importing {

/// Every spreadsheet instance that was started. The owner outlives the screens, since leaving a
/// screen by its frame leaves its workbook in view.
using excel::Applications;

using library::Backup;

/// Stopped: refused, cancelled or not writable; the user was told.
enum class ImportResult { Finished, Stopped };

/// What an import demands of its sheet.
struct SheetRules
{
    enum class Activation { BringForward, LeaveInPlace };

    /// Tag of its error trap.
    const char* tag;
    /// Exact texts of row 1.
    QStringList headings;
    /// Second half of the message about another row 1.
    QString headingText;
    Activation activation;
};

extern const SheetRules examSheet;
extern const SheetRules studentSheet;
extern const SheetRules classChangeSheet;

/// The last column of a sheet that an import looks at.
inline constexpr int LastColumn = 255;
/// What the progress says while rows are taken.
extern const QString TakingRows;

/// True for a cell without a content and for an empty text.
bool isEmptyCell(const runtime::Value& cell);

/// What is told of an error cell (#N/A) whose field stays empty.
QString errorCellText(const runtime::Value& cell);

/// The workbook that an import reads from: choosing it, and opening one of its sheets.
class WorkbookIntake
{
public:
    WorkbookIntake(Applications& applications, const SheetRules& rules);

    /// "浏览": starts a spreadsheet instance, opens the file in it and shows it. No message is
    /// given for a file that cannot be opened: there is no workbook then, and the import says why.
    /// The instance of an earlier browse stays open.
    void browse(const QString& path);

    /// Reads from a workbook that is open already; `path` is the file that it stands for.
    void use(excel::Application& application, excel::Workbook& book, const QString& path);

    /// The sheets in workbook order; empty without a workbook.
    QStringList sheetNames() const;

    /// The workbook and its spreadsheet instance; null without one.
    excel::Workbook* workbook() const { return m_excelBook; }
    excel::Application* application() const { return m_excelApp; }

    /// Why the file of the latest browse could not be opened; empty if it was.
    const QString& openError() const { return m_openError; }

    /// The workbook's folder with its last slash.
    QString folder() const;

    /// The file name without folder and ending, which is offered as the exam's name.
    static QString examNameOf(const QString& path);

    /// True if the workbook answers; otherwise a message.
    bool checkWorkbookOpen() const;

    /// The sheet with its filter switched off, if its row 1 is as demanded; otherwise a message and
    /// null.
    excel::Worksheet* openSheet(const QString& name) const;

    /// Whether row 1 of the sheet is as demanded; no message is given.
    bool hasHeadings(const QString& sheetName) const;

    /// Closes the spreadsheet instance with its workbooks.
    void quitApplication();

private:
    bool hasHeadings(const excel::Worksheet& sheet) const;

    Applications& m_applications;
    const SheetRules& m_rules;
    QString m_path;
    /// Why the file of the latest browse could not be opened.
    QString m_openError;
    excel::Application* m_excelApp = nullptr;
    excel::Workbook* m_excelBook = nullptr;
};

} // namespace importing
