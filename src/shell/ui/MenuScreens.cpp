#include "shell/ui/MenuScreens.h"

#include <QFileInfo>

#include "configuration/ui/FormSet.h"
#include "configuration/ui/FormZDYXS.h"
#include "export/ui/FormDaoChu.h"
#include "import/ui/FormDaoRu.h"
#include "import/ui/FormDaoRuFenBanXinXi.h"
#include "import/ui/FormDaoRuXinXi.h"
#include "import/ui/Formgf.h"
#include "import/ui/TidyScreen.h"
#include "individual/ui/FormGeRenChengJi.h"
#include "library/AskedRestore.h"
#include "library/ui/FormNew.h"
#include "library/ui/RestoreScreen.h"
#include "maintenance/ui/AddStudentScreen.h"
#include "maintenance/ui/AddSubjectScreen.h"
#include "maintenance/ui/ExamDetailsScreen.h"
#include "maintenance/ui/FormDelKM.h"
#include "maintenance/ui/FormJiaoShiMingDan.h"
#include "maintenance/ui/FormSheZhiWenLi.h"
#include "maintenance/ui/FormSheZhiZhaoPian.h"
#include "maintenance/ui/FormXGXX.h"
#include "maintenance/ui/FormXiuGaiChengJi.h"
#include "maintenance/ui/FormZhuanBan.h"
#include "maintenance/ui/StudentMovesScreen.h"
#include "oldlibraries/AskedConversion.h"
#include "oldlibraries/ui/ReportScreen.h"
#include "platform/runtime/Error.h"
#include "platform/widgets/ScreenProgress.h"
#include "scoring/ui/FormZFGS.h"
#include "shell/GridExport.h"
#include "shell/ui/frmAbout.h"
#include "workbench/FigureList.h"
#include "workbench/ui/ExplanationScreen.h"
#include "workbench/ui/FigureScreen.h"

namespace shell {

using namespace Qt::StringLiterals;

MenuScreens::MenuScreens(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                         QWidget& mainWindow)
    : m_library(scoreLibrary), m_dialogs(dialogs), m_mainWindow(mainWindow)
{
}

MenuScreens::~MenuScreens() = default;

void MenuScreens::show(widgets::Screen& screen)
{
    screen.setWindowModality(Qt::WindowModal);
    screen.exec();
}

void MenuScreens::updatePhotoCheck()
{
    // Photos and remarks change without a word to the others.
    if (m_photoCheck)
        m_photoCheck->takeChanges();
}

void MenuScreens::follow(importing::IntakeScreen& screen)
{
    QObject::connect(&screen, &importing::IntakeScreen::sheetChosen, &m_windows,
                     [this](excel::Workbook& book, const QString& sheet) {
                         if (excel::WorkbookWindow* window = m_windows.windowOf(book))
                             window->showSheet(sheet);
                     });
    QObject::connect(&m_windows, &excel::WorkbookWindows::sheetChosen, &screen,
                     &importing::IntakeScreen::chooseSheet);
}

void MenuScreens::showFormNew()
{
    library::FormNew screen(m_library, m_dialogs, &m_mainWindow);
    // Queued: the import is not part of the command that made the library.
    QObject::connect(
        &screen, &library::FormNew::created, &screen,
        [this, &screen] { showFormDaoRuXinXi(screen); }, Qt::QueuedConnection);
    show(screen);
}

void MenuScreens::showFormDaoRu(const QString& workbook)
{
    importing::FormDaoRu screen(m_library, m_dialogs, m_applications, m_latestImport,
                                &m_mainWindow);
    follow(screen);
    if (!workbook.isEmpty())
        screen.browse(workbook);
    show(screen);
}

void MenuScreens::importStudents()
{
    showFormDaoRuXinXi(m_mainWindow);
}

void MenuScreens::showFormDaoRuXinXi(QWidget& over)
{
    importing::FormDaoRuXinXi screen(m_library, m_dialogs, m_applications, &over);
    follow(screen);
    show(screen);
}

void MenuScreens::showTidyScreen()
{
    importing::TidyScreen screen(m_library, m_dialogs, m_applications, tidy::Goal::ExamScores,
                                 importing::TidyScreen::GoalChoice::Free, &m_mainWindow);
    show(screen);
    if (screen.tidiedBook())
        importTidied(*screen.tidiedBook());
}

void MenuScreens::importTidied(const importing::TidiedBook& tidied)
{
    const auto import = [&](importing::IntakeScreen& screen) {
        follow(screen);
        screen.use(*tidied.application, *tidied.book, tidied.path);
        show(screen);
    };
    if (tidied.goal == tidy::Goal::ExamScores) {
        importing::FormDaoRu screen(m_library, m_dialogs, m_applications, m_latestImport,
                                    &m_mainWindow);
        import(screen);
    } else {
        importing::FormDaoRuXinXi screen(m_library, m_dialogs, m_applications, &m_mainWindow);
        import(screen);
    }
}

void MenuScreens::showFormDaoRuFenBanXinXi()
{
    importing::FormDaoRuFenBanXinXi screen(m_library, m_dialogs, m_applications, &m_mainWindow);
    follow(screen);
    show(screen);
}

void MenuScreens::showFormZFGS()
{
    scoring::FormZFGS screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
}

void MenuScreens::showFormZDYXS(const QString& item, const QString& stream)
{
    configuration::FormZDYXS screen(m_library, m_dialogs, &m_mainWindow);
    screen.setItem(item, stream);
    screen.init();
    show(screen);
}

void MenuScreens::showFormSet()
{
    configuration::FormSet screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
}

void MenuScreens::showFormDaoChu()
{
    const QString library = m_library.Conn.path();
    if (m_export && m_exportedLibrary == library) {
        m_export->Form_Load();
    } else {
        m_export = std::make_unique<exporting::FormDaoChu>(m_library, m_dialogs, m_applications,
                                                           &m_mainWindow);
        QObject::connect(
            m_export.get(), &exporting::FormDaoChu::columnsRequested, m_export.get(),
            [this](const QString& item, const QString& key) { showColumnsOfExport(item, key); });
        m_exportedLibrary = library;
    }
    show(*m_export);
}

void MenuScreens::showColumnsOfExport(const QString& item, const QString& key)
{
    configuration::FormZDYXS screen(m_library, m_dialogs, m_export.get());
    screen.setItemOfAllStreams(item, key);
    screen.init();
    show(screen);
}

void MenuScreens::showFormGeRenChengJi()
{
    individual::FormGeRenChengJi screen(m_library, m_dialogs, m_applications, &m_mainWindow);
    show(screen);
}

void MenuScreens::checkScores()
{
    if (m_latestImport.ErrorCount > 0) {
        importing::Formgf screen(m_latestImport, &m_mainWindow,
                                 importing::Formgf::Shown::AfterImport);
        show(screen);
    } else {
        runtime::MsgBox(u"没有发现不合格的成绩！"_s);
    }
}

void MenuScreens::showFormXGXX()
{
    maintenance::FormXGXX screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
    updatePhotoCheck();
}

void MenuScreens::checkPhotos()
{
    if (!m_photoCheck) {
        m_photoCheck = new maintenance::FormXGXX(m_library, m_dialogs, &m_mainWindow);
        m_photoCheck->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_photoCheck->listWithoutPhoto();
    m_photoCheck->show();
    m_photoCheck->activateWindow();
}

void MenuScreens::showFormXiuGaiChengJi()
{
    maintenance::FormXiuGaiChengJi screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
}

void MenuScreens::showFormDelKM()
{
    maintenance::FormDelKM screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
}

void MenuScreens::showFormJiaoShiMingDan()
{
    maintenance::FormJiaoShiMingDan screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
}

void MenuScreens::showFormSheZhiWenLi()
{
    maintenance::FormSheZhiWenLi screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
}

void MenuScreens::showFormSheZhiZhaoPian()
{
    maintenance::FormSheZhiZhaoPian screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
    updatePhotoCheck();
}

void MenuScreens::showFormZhuanBan()
{
    bool areMovesWanted = false;
    maintenance::FormZhuanBan screen(m_library, &m_mainWindow);
    QObject::connect(&screen, &maintenance::FormZhuanBan::movesRequested, &screen, [&] {
        areMovesWanted = true;
        screen.close();
    });
    show(screen);
    if (areMovesWanted)
        showStudentMoves();
}

void MenuScreens::showStudentMoves()
{
    maintenance::StudentMovesScreen screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
}

void MenuScreens::showExamDetails(const QString& exam)
{
    if (m_library.catalogue.ExamList.isEmpty())
        return runtime::warn(u"成绩库里还没有考试。"_s);
    maintenance::ExamDetailsScreen screen(m_library, m_dialogs, exam, &m_mainWindow);
    show(screen);
}

void MenuScreens::addSubject()
{
    maintenance::AddSubjectScreen screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
    if (screen.wantsTotals())
        showFormZFGS();
}

void MenuScreens::addStudent()
{
    maintenance::AddStudentScreen screen(m_library, m_dialogs, &m_mainWindow);
    show(screen);
}

void MenuScreens::showExplanation(const workbench::ReportRequest& request)
{
    workbench::ExplanationScreen screen(m_library, request, &m_mainWindow);
    QObject::connect(&screen, &workbench::ExplanationScreen::settingRequested, &screen,
                     [this, &screen](const QString& setting) {
                         configuration::FormSet settings(m_library, m_dialogs, &screen);
                         settings.showSetting(setting);
                         show(settings);
                         screen.refresh();
                     });
    show(screen);
}

void MenuScreens::showAbout()
{
    frmAbout screen(&m_mainWindow);
    show(screen);
}

namespace {

/// Nothing after a message.
std::optional<workbench::FigureList> listed(library::ScoreLibrary& scoreLibrary,
                                            const statistics::Figure& figure,
                                            const QStringList& columns)
{
    try {
        return workbench::listStudents(scoreLibrary, figure, columns);
    } catch (const runtime::Error& error) {
        runtime::warn(u"名单没有列出来："_s + error.description());
        return std::nullopt;
    }
}

} // namespace

void MenuScreens::showFigure(const statistics::Figure& figure, const QStringList& columns)
{
    std::optional<workbench::FigureList> list = listed(m_library, figure, columns);
    if (!list)
        return;
    workbench::FigureScreen screen(std::move(*list), &m_mainWindow);
    QObject::connect(&screen, &workbench::FigureScreen::exportRequested, &screen,
                     [this](const grid::FlexGrid& grid) {
                         const widgets::CommandScope command(m_dialogs);
                         copyGridToWorkbook(grid, excel::OpenExcel(m_applications));
                     });
    show(screen);
}

void MenuScreens::showReport(const oldlibraries::ConversionReport& report)
{
    oldlibraries::ReportScreen screen(report, m_dialogs, &m_mainWindow);
    show(screen);
}

bool MenuScreens::restoreCopy(const QString& libraryPath)
{
    bool isRestored = false;
    library::RestoreScreen screen(m_library, m_dialogs, libraryPath, &m_mainWindow);
    QObject::connect(&screen, &library::RestoreScreen::restored, &screen,
                     [&isRestored] { isRestored = true; });
    show(screen);
    return isRestored;
}

bool MenuScreens::undoLastImport()
{
    widgets::ScreenProgress progress(&m_mainWindow);
    return library::undoLastImport(m_library, progress);
}

std::optional<oldlibraries::ConversionReport> MenuScreens::convertOldLibrary(const QString& path)
{
    m_dialogs.startIn(QFileInfo(path).path());
    const std::optional<oldlibraries::ConversionRequest> request =
        oldlibraries::askForConversion(path, m_library.Conn, m_library.paths());
    m_dialogs.startIn({});
    if (!request || !mayLeaveLibrary())
        return std::nullopt;
    widgets::ScreenProgress progress(&m_mainWindow);
    return oldlibraries::convertAsked(*request, m_library.paths(), progress);
}

bool MenuScreens::mayLeaveLibrary()
{
    return !m_photoCheck || m_photoCheck->mayLeave();
}

bool MenuScreens::closeAll()
{
    if (!mayLeaveLibrary() || !m_windows.closeAll())
        return false;
    if (m_photoCheck)
        m_photoCheck->discard();
    return true;
}

} // namespace shell
