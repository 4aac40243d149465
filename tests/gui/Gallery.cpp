#include "gui/Gallery.h"

#include <algorithm>

#include <QDockWidget>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>

#include "configuration/ui/FormSet.h"
#include "configuration/ui/FormXiangXiSZ.h"
#include "configuration/ui/FormZDYXS.h"
#include "export/ui/FormDaoChu.h"
#include "import/ui/FormDaoRu.h"
#include "import/ui/FormDaoRuFenBanXinXi.h"
#include "import/ui/FormDaoRuXinXi.h"
#include "import/ui/FormShuRuMF.h"
#include "import/ui/Formgf.h"
#include "import/ui/PreviewScreen.h"
#include "import/ui/TidyScreen.h"
#include "individual/ui/FormGeRenChengJi.h"
#include "library/ui/FormNew.h"
#include "library/ui/FormXiuGaiKeMu.h"
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
#include "maintenance/ui/FormZMD.h"
#include "maintenance/ui/FormZhuanBan.h"
#include "maintenance/ui/StudentMovesScreen.h"
#include "oldlibraries/ui/ReportScreen.h"
#include "platform/runtime/TextFile.h"
#include "scoring/ui/FormZFGS.h"
#include "shell/ui/AFormMain.h"
#include "shell/ui/frmAbout.h"
#include "workbench/ui/ExplanationScreen.h"
#include "workbench/ui/FigureScreen.h"
#include "workbooks/ui/WorkbookWindow.h"

namespace support {

using namespace Qt::StringLiterals;

const Gallery::Entry Gallery::entries[] = {
    {u"AFormMain", &Gallery::mainWindow},
    {u"AFormMain without a library", &Gallery::mainWindowWithoutLibrary},
    {u"AFormMain without its panel", &Gallery::mainWindowWithoutPanel},
    {u"Panel", &Gallery::floatingPanel},
    {u"WorkbookWindow", &Gallery::workbook},
    {u"FigureScreen", &Gallery::figureStudents},
    {u"PreviewScreen", &Gallery::importPreview},
    {u"TidyScreen", &Gallery::tidying},
    {u"FormNew", &Gallery::newLibrary},
    {u"FormXiuGaiKeMu", &Gallery::subjects},
    {u"FormDaoRu", &Gallery::examImport},
    {u"FormDaoRuXinXi", &Gallery::studentImport},
    {u"FormDaoRuFenBanXinXi", &Gallery::reclassing},
    {u"FormShuRuMF", &Gallery::fullMarks},
    {u"Formgf", &Gallery::errorList},
    {u"FormZFGS", &Gallery::formulas},
    {u"FormZDYXS", &Gallery::customDisplay},
    {u"FormSet", &Gallery::analysisSettings},
    {u"FormXiangXiSZ", &Gallery::subjectConditions},
    {u"FormDaoChu", &Gallery::scoreExport},
    {u"FormGeRenChengJi", &Gallery::individualAnalysis},
    {u"FormXGXX", &Gallery::record},
    {u"FormXiuGaiChengJi", &Gallery::scoreCorrection},
    {u"FormDelKM", &Gallery::subjectRemoval},
    {u"FormJiaoShiMingDan", &Gallery::teacherList},
    {u"FormZMD", &Gallery::teacherNames},
    {u"FormSheZhiWenLi", &Gallery::classStreams},
    {u"FormSheZhiZhaoPian", &Gallery::photos},
    {u"FormZhuanBan", &Gallery::classChange},
    {u"StudentMovesScreen", &Gallery::studentMoves},
    {u"ExamDetailsScreen", &Gallery::examDetails},
    {u"AddSubjectScreen", &Gallery::subjectAddition},
    {u"AddStudentScreen", &Gallery::studentAddition},
    {u"ReportScreen", &Gallery::conversionReport},
    {u"RestoreScreen", &Gallery::copies},
    {u"ExplanationScreen", &Gallery::explanation},
    {u"frmAbout", &Gallery::about},
    {u"ProgressWindow", &Gallery::progress},
};

Gallery::Gallery()
{
    QStandardPaths::setTestModeEnabled(true);
    QSettings().clear();
    addExam();
    addErrors();
}

Gallery::~Gallery()
{
    closeAll();
}

QStringList Gallery::names()
{
    QStringList all;
    for (const Entry& entry : entries)
        all.append(QString::fromUtf16(entry.name));
    return all;
}

QStringList Gallery::screenNames()
{
    // Those of our own stand before, as Esc closes them.
    return names().mid(names().indexOf(u"FormNew"_s));
}

QWidget& Gallery::open(const QString& name)
{
    closeAll();
    const auto* const entry =
        std::find_if(std::begin(entries), std::end(entries),
                     [&](const Entry& e) { return name == QString::fromUtf16(e.name); });
    QWidget* const window = (this->*entry->make)();
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window)) << name.toStdString();
    return *window;
}

void Gallery::closeAll()
{
    m_progress.reset();
    m_window.reset();
}

void Gallery::addExam()
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.addStudent(2, 1, u"陈静"_s, u"理"_s);
    for (const QString& stream : {u"文"_s, u"理"_s})
        library.addExam(u"期中"_s, stream, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
    library.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 80}});
    library.reload();
}

void Gallery::addErrors()
{
    m_state.KMImport = {{u"语文"_s, 150, 4}, {u"数学"_s, 100, 5}};
    m_state.ErrorCount = 1;
    m_state.MFGData.setCols(5);
    m_state.MFGData.setRows(5);
    m_state.errors.setCols(7);
    m_state.errors.setRows(2);
    m_state.errors.setColWidth(6, 0);
    const QList<QStringList> rows{
        {u"班级"_s, u"学号"_s, u"姓名"_s, u"科目"_s, u"成绩"_s, u"错误原因"_s},
        {u"1"_s, u"1"_s, u"王芳"_s, u"语文"_s, u"160"_s, u"超过总分"_s}};
    for (int row = 0; row < 2; ++row) {
        for (int col = 0; col < rows[row].size(); ++col)
            m_state.errors.setTextMatrix(row, col, rows[row][col]);
    }
}

/// With the result grid in view.
QWidget* Gallery::mainWindow()
{
    auto* window = keep(std::make_unique<shell::AFormMain>(library.scores, m_screenDialogs));
    window->start(library.scores.LibPath);
    QTest::mouseClick(window->findChild<QPushButton*>(u"CommandLLCJ"_s), Qt::LeftButton);
    return window;
}

/// With the start page, which lists the library of the tests.
QWidget* Gallery::mainWindowWithoutLibrary()
{
    runtime::writeTextFile(library.paths.dataFile(u"recent.dat"_s), library.scores.LibPath);
    auto* window = keep(std::make_unique<shell::AFormMain>(m_closed, m_screenDialogs));
    window->start({});
    return window;
}

QWidget* Gallery::mainWindowWithoutPanel()
{
    QWidget* window = mainWindow();
    auto* panel = window->findChild<QDockWidget*>(u"Panel"_s);
    panel->setFloating(true);
    panel->show();
    return window;
}

QWidget* Gallery::floatingPanel()
{
    QWidget* window = mainWindowWithoutPanel();
    window->show();
    return window->findChild<QDockWidget*>(u"Panel"_s);
}

QWidget* Gallery::newLibrary()
{
    return keep(std::make_unique<library::FormNew>(library.scores, m_screenDialogs, nullptr));
}

QWidget* Gallery::subjects()
{
    return keep(std::make_unique<library::FormXiuGaiKeMu>(library.paths, nullptr));
}

/// With a workbook, of which one column is open.
QWidget* Gallery::tidying()
{
    auto* screen = keep(std::make_unique<importing::TidyScreen>(
        library.scores, m_screenDialogs, m_applications, tidy::Goal::ExamScores,
        importing::TidyScreen::GoalChoice::Free, nullptr));
    excel::Workbook& book = m_spreadsheet.Workbooks().Add();
    excel::Worksheet& sheet = book.Worksheets().Item(1);
    int column = 0;
    for (const QString& heading : {u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"语文"_s})
        sheet.setCell(1, ++column, heading);
    for (column = 1; column <= 5; ++column)
        sheet.setCell(2, column, column);
    screen->use(book, library.file(u"期中.xlsx"_s));
    return screen;
}

QWidget* Gallery::examImport()
{
    auto* form = keep(std::make_unique<importing::FormDaoRu>(library.scores, m_screenDialogs,
                                                             m_applications, m_state, nullptr));
    // The start of the import is off until a workbook is chosen.
    form->findChild<QPushButton*>(u"Command1"_s)->setEnabled(true);
    return form;
}

QWidget* Gallery::importPreview()
{
    importing::Preview preview;
    preview.title = u"考试“期中”"_s;
    preview.warning = u"成绩库里已经有考试“期中”！"_s;
    preview.notes = QStringList{u"满分 150。"_s};
    preview.add({importing::PreviewKind::Changed,
                 2,
                 u"1"_s,
                 u"1"_s,
                 u"王芳"_s,
                 u"语文"_s,
                 u"90"_s,
                 u"91"_s,
                 {}});
    return keep(
        std::make_unique<importing::PreviewScreen>(std::move(preview), m_screenDialogs, nullptr));
}

QWidget* Gallery::studentImport()
{
    return keep(std::make_unique<importing::FormDaoRuXinXi>(library.scores, m_screenDialogs,
                                                            m_applications, nullptr));
}

QWidget* Gallery::reclassing()
{
    return keep(std::make_unique<importing::FormDaoRuFenBanXinXi>(library.scores, m_screenDialogs,
                                                                  m_applications, nullptr));
}

QWidget* Gallery::fullMarks()
{
    return keep(
        std::make_unique<importing::FormShuRuMF>(m_state, library.paths, u"文科：期中"_s, nullptr));
}

QWidget* Gallery::errorList()
{
    return keep(std::make_unique<importing::Formgf>(m_state, nullptr));
}

QWidget* Gallery::formulas()
{
    return keep(std::make_unique<scoring::FormZFGS>(library.scores, m_screenDialogs, nullptr));
}

QWidget* Gallery::customDisplay()
{
    auto* form =
        keep(std::make_unique<configuration::FormZDYXS>(library.scores, m_screenDialogs, nullptr));
    form->setItem(u"T分"_s, u"文"_s);
    form->init();
    return form;
}

QWidget* Gallery::analysisSettings()
{
    return keep(std::make_unique<configuration::FormSet>(library.scores, m_screenDialogs, nullptr));
}

QWidget* Gallery::subjectConditions()
{
    m_conditions.makeFrom(statistics::Interval::parse(u"[0.85,1]"_s));
    return keep(std::make_unique<configuration::FormXiangXiSZ>(m_conditions, m_settings,
                                                               m_screenDialogs, nullptr));
}

QWidget* Gallery::scoreExport()
{
    return keep(std::make_unique<exporting::FormDaoChu>(library.scores, m_screenDialogs,
                                                        m_applications, nullptr));
}

QWidget* Gallery::individualAnalysis()
{
    return keep(std::make_unique<individual::FormGeRenChengJi>(library.scores, m_screenDialogs,
                                                               m_applications, nullptr));
}

/// With the list of students without a photo.
QWidget* Gallery::record()
{
    auto* form =
        keep(std::make_unique<maintenance::FormXGXX>(library.scores, m_screenDialogs, nullptr));
    form->listWithoutPhoto();
    return form;
}

QWidget* Gallery::scoreCorrection()
{
    return keep(
        std::make_unique<maintenance::FormXiuGaiChengJi>(library.scores, m_screenDialogs, nullptr));
}

QWidget* Gallery::subjectRemoval()
{
    return keep(std::make_unique<maintenance::FormDelKM>(library.scores, m_screenDialogs, nullptr));
}

QWidget* Gallery::teacherList()
{
    return keep(std::make_unique<maintenance::FormJiaoShiMingDan>(library.scores, m_screenDialogs,
                                                                  nullptr));
}

QWidget* Gallery::teacherNames()
{
    return keep(std::make_unique<maintenance::FormZMD>(library.paths, m_screenDialogs, nullptr));
}

QWidget* Gallery::classStreams()
{
    return keep(
        std::make_unique<maintenance::FormSheZhiWenLi>(library.scores, m_screenDialogs, nullptr));
}

QWidget* Gallery::photos()
{
    return keep(std::make_unique<maintenance::FormSheZhiZhaoPian>(library.scores, m_screenDialogs,
                                                                  nullptr));
}

QWidget* Gallery::classChange()
{
    return keep(std::make_unique<maintenance::FormZhuanBan>(library.scores, nullptr));
}

QWidget* Gallery::studentMoves()
{
    return keep(std::make_unique<maintenance::StudentMovesScreen>(library.scores, m_screenDialogs,
                                                                  nullptr));
}

QWidget* Gallery::examDetails()
{
    return keep(std::make_unique<maintenance::ExamDetailsScreen>(library.scores, m_screenDialogs,
                                                                 u"期中"_s, nullptr));
}

QWidget* Gallery::subjectAddition()
{
    return keep(
        std::make_unique<maintenance::AddSubjectScreen>(library.scores, m_screenDialogs, nullptr));
}

QWidget* Gallery::studentAddition()
{
    return keep(
        std::make_unique<maintenance::AddStudentScreen>(library.scores, m_screenDialogs, nullptr));
}

QWidget* Gallery::conversionReport()
{
    return keep(std::make_unique<oldlibraries::ReportScreen>(
        oldlibraries::ConversionReport{u"/旧.CJK"_s, u"/新.CJK"_s, {{u"信息表"_s, 1}}, {}},
        m_screenDialogs, nullptr));
}

QWidget* Gallery::figureStudents()
{
    return keep(std::make_unique<workbench::FigureScreen>(
        workbench::FigureList{{}, u"期中，理科，2 班"_s, {}, {}, u"select 1"_s}, nullptr));
}

QWidget* Gallery::copies()
{
    return keep(std::make_unique<library::RestoreScreen>(library.scores, m_screenDialogs,
                                                         library.scores.LibPath, nullptr));
}

QWidget* Gallery::explanation()
{
    const workbench::ReportRequest request{.exams = {u"期中"_s}, .item = u"高分段、低分段"_s};
    return keep(std::make_unique<workbench::ExplanationScreen>(library.scores, request, nullptr));
}

QWidget* Gallery::about()
{
    return keep(std::make_unique<shell::frmAbout>(nullptr));
}

QWidget* Gallery::progress()
{
    QWidget* owner = keep(std::make_unique<QWidget>());
    m_progress = std::make_unique<widgets::ScreenProgress>(owner, std::chrono::milliseconds(0));
    m_progress->report(u"导入数据..."_s, 1, 10);
    return owner->findChild<QDialog*>(u"ProgressWindow"_s);
}

QWidget* Gallery::workbook()
{
    excel::Workbook& book = m_spreadsheet.Workbooks().Add();
    auto window = std::make_unique<excel::WorkbookWindow>(book, u"工作簿1"_s);
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    return keep(std::move(window));
}

} // namespace support
