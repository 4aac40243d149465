#pragma once

#include <memory>
#include <optional>

#include <QPointer>

#include "import/ImportState.h"
#include "library/ScoreLibrary.h"
#include "oldlibraries/ConversionReport.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"
#include "statistics/Figure.h"
#include "workbooks/model/Application.h"
#include "workbooks/ui/WorkbookWindows.h"

namespace importing {
class IntakeScreen;
struct TidiedBook;
} // namespace importing

namespace exporting {
class FormDaoChu;
}

namespace maintenance {
class FormXGXX;
}

namespace workbench {
struct ReportRequest;
}

namespace shell {

/// The screens that the menus and the workbench open, each modal over the main window; the windows
/// of the workbooks stay free. Keeps what outlives a screen: the latest import, the open workbooks,
/// and the screen of the export with what was chosen on it.
class MenuScreens
{
public:
    MenuScreens(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                QWidget& mainWindow);
    ~MenuScreens();

    excel::Applications& applications() { return m_applications; }
    excel::WorkbookWindows& workbookWindows() { return m_windows; }

    /// "新建成绩库"; a library that was made is followed by the import of its students.
    void showFormNew();
    /// "导入考试成绩"; with a path, that workbook is opened at once.
    void showFormDaoRu(const QString& workbook = {});
    /// "导入学生信息".
    void importStudents();
    /// "整理工作簿"; what was made goes to the import that it was made for.
    void showTidyScreen();
    /// "重新分班".
    void showFormDaoRuFenBanXinXi();
    /// "总分设置".
    void showFormZFGS();
    /// "自定义显示" for an item and a stream of the workbench.
    void showFormZDYXS(const QString& item, const QString& stream);
    /// "分析设置".
    void showFormSet();
    /// "导出到Excel": shown again over the same library, the screen holds what was chosen on it.
    void showFormDaoChu();
    /// "个人分析".
    void showFormGeRenChengJi();
    /// "检查成绩": the bad scores of the latest import since the program started, if there were
    /// any.
    void checkScores();
    /// "修改学生信息".
    void showFormXGXX();
    /// The same beside the list of students without a photo; it does not block the main window.
    void checkPhotos();
    /// "修改成绩".
    void showFormXiuGaiChengJi();
    /// "删除科目".
    void showFormDelKM();
    /// "设置教师名单".
    void showFormJiaoShiMingDan();
    /// "设置科类(文理科)".
    void showFormSheZhiWenLi();
    /// "设置照片".
    void showFormSheZhiZhaoPian();
    /// "转班", and the screen that its last button leads to.
    void showFormZhuanBan();
    /// "学生调整".
    void showStudentMoves();
    /// "考试信息" of this exam; of the first one for "".
    void showExamDetails(const QString& exam);
    /// "添加科目", and "总分设置" after it if the user wants to go on there.
    void addSubject();
    /// "添加学生".
    void addStudent();
    /// "口径" of the report of a request; its settings are changed from there.
    void showExplanation(const workbench::ReportRequest& request);
    void showAbout();
    /// "查看名单": the students behind a figure of the main grid, with these columns.
    void showFigure(const statistics::Figure& figure, const QStringList& columns);
    /// "转换报告".
    void showReport(const oldlibraries::ConversionReport& report);

    /// "恢复备份" for the library of that path. True if a copy took its place.
    bool restoreCopy(const QString& libraryPath);
    /// "撤消上次导入". True if it was.
    bool undoLastImport();

    /// Leads the user through the conversion of an old library. Nothing if there is no new one.
    std::optional<oldlibraries::ConversionReport> convertOldLibrary(const QString& path);

    /// Asks for what is not saved in the screens that do not block the main window, before another
    /// library is opened. False if the user stays.
    bool mayLeaveLibrary();

    /// Closes the screens that do not block the main window and the windows of the workbooks; asks
    /// for what is not saved there. False if the user stays.
    bool closeAll();

private:
    void show(widgets::Screen& screen);
    void updatePhotoCheck();
    void showFormDaoRuXinXi(QWidget& over);
    void importTidied(const importing::TidiedBook& tidied);
    /// "自定义显示" for the columns of the export, over its screen.
    void showColumnsOfExport(const QString& item, const QString& key);
    /// The workbook's window follows the sheet that is chosen on the screen, and the screen that
    /// of the window.
    void follow(importing::IntakeScreen& screen);

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    QWidget& m_mainWindow;
    excel::Applications m_applications;
    excel::WorkbookWindows m_windows;
    importing::ImportState m_latestImport;
    std::unique_ptr<exporting::FormDaoChu> m_export;
    /// The library that the choices on m_export were made in.
    QString m_exportedLibrary;
    QPointer<maintenance::FormXGXX> m_photoCheck;
};

} // namespace shell
