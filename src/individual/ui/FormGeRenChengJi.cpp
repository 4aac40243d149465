#include "individual/ui/FormGeRenChengJi.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QHideEvent>
#include <QMenu>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QVBoxLayout>

#include "individual/ChartRanks.h"
#include "individual/paint/ChartFiles.h"
#include "individual/paint/ClassCharts.h"
#include "individual/ui/ChartSurface.h"
#include "individual/ui/ClassChartsChoice.h"
#include "individual/ui/ExamsAndChart.h"
#include "individual/ui/SubjectPanel.h"
#include "library/StudentPhoto.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"
#include "platform/widgets/ScreenProgress.h"

namespace individual {

using namespace Qt::StringLiterals;
using runtime::Trap;
using widgets::CommandScope;

namespace {

const QString geometryKey = u"FormGeRenChengJi/geometry"_s;
const QString sidesKey = u"FormGeRenChengJi/sides"_s;
const QString gridHeightKey = u"FormGeRenChengJi/gridHeight"_s;

/// The library with exams and columns as they are now, for the screen is made of them.
library::ScoreLibrary& refreshed(library::ScoreLibrary& scores)
{
    const Trap trap{" - Private Sub Form_Load/FormGeRenChenJi"};
    trap([&] { scores.refreshCatalogue(); });
    return scores;
}

/// Width of a Chinese character, in twips.
double characterWidth(const QWidget& widget)
{
    constexpr double twipsPerInch = 1440;
    const QFontMetricsF LabelZHBZ(widget.font());
    return LabelZHBZ.horizontalAdvance(u"我"_s) * twipsPerInch / widget.logicalDpiX();
}

} // namespace

FormGeRenChengJi::FormGeRenChengJi(library::ScoreLibrary& scoreLibrary,
                                   widgets::ScreenDialogs& dialogs,
                                   excel::Applications& applications, QWidget* parent)
    : Screen(u"FormGeRenChengJi"_s, u"学生成绩分析"_s, parent),
      m_library(refreshed(scoreLibrary)),
      m_dialogs(dialogs),
      m_applications(applications),
      m_student(scoreLibrary, characterWidth(*this)),
      m_colors(scoreLibrary)
{
    const CommandScope command(m_dialogs);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    Form_Load();
}

void FormGeRenChengJi::Form_Load()
{
    m_colors.load();
    build();
    buildMenu();
    connectControls();
    restoreSizes();
    ShowStuTree();
    if (m_library.catalogue.ExamList.isEmpty())
        runtime::warn(noExams());
}

void FormGeRenChengJi::build()
{
    m_right = new ExamsAndChart(m_student.MSFlexGrid1, this);
    m_student.MSFlexGrid1.FontSize = m_right->exams()->font().pointSizeF();
    Picture1 = m_right->chart();
    m_sides = new QSplitter(this);
    m_sides->setChildrenCollapsible(false);
    m_sides->addWidget(makeLeftSide());
    m_sides->addWidget(m_right);
    m_sides->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_sides);
    FormZP = new library::FormZP(m_library.paths().dataFile(u"nopic.gif"_s), this);
}

QWidget* FormGeRenChengJi::makeLeftSide()
{
    auto* side = new QWidget(this);
    m_tree = new library::StudentTreePanel(m_dialogs, side);
    Picture2 = new SubjectPanel(m_library.catalogue.AllColumns, m_colors, side);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tree, 1);
    layout->addWidget(Picture2, 1);
    return side;
}

void FormGeRenChengJi::buildMenu()
{
    tDC = new QMenu(this);
    tDC->setObjectName(u"tDC"_s);
    addCommand(u"tDCCJ"_s, u"导出成绩(&C)"_s, &FormGeRenChengJi::tDCCJ_Click);
    addCommand(u"tDCTP"_s, u"导出分析图(&T)"_s, &FormGeRenChengJi::tDCTP_Click);
    tDC->addSeparator()->setObjectName(u"fg"_s);
    addCommand(u"tDCSY"_s, u"导出成绩和分析图(&S)"_s, &FormGeRenChengJi::tDCSY_Click);
    tDC->addSeparator();
    addCommand(u"CopyPicture"_s, u"复制图片(&P)"_s, &FormGeRenChengJi::copyPicture);
    addCommand(u"ExportClass"_s, u"导出全班分析图(&A)…"_s, &FormGeRenChengJi::exportClass);
}

void FormGeRenChengJi::addCommand(const QString& name, const QString& caption,
                                  void (FormGeRenChengJi::*command)())
{
    QAction* action = tDC->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [this, command] {
        const CommandScope scope(m_dialogs);
        (this->*command)();
    });
}

void FormGeRenChengJi::connectControls()
{
    connect(m_tree, &library::StudentTreePanel::nodeChosen, this,
            &FormGeRenChengJi::TreeView1_Click);
    connect(m_right, &ExamsAndChart::splitterReleased, this, &FormGeRenChengJi::TreeView1_Click);
    connect(m_right, &ExamsAndChart::menuRequested, this,
            [this](const QPoint& place) { tDC->popup(place); });
    connect(m_sides, &QSplitter::splitterMoved, this, &FormGeRenChengJi::redraw);
    connect(Picture2, &SubjectPanel::chosen, this, [this] {
        const CommandScope command(m_dialogs);
        HuiTu();
    });
    connect(Picture2, &SubjectPanel::swatchPressed, this, &FormGeRenChengJi::Command1_MouseUp);
}

/// The photo in the display's top right corner would hide the button that closes this window.
void FormGeRenChengJi::placeBesidePhoto()
{
    const QRect display = screen()->availableGeometry();
    const int letter = fontMetrics().averageCharWidth();
    const int frames = letter * 4;
    const int room = display.width() - FormZP->width() - frames;
    resize(std::min(letter * 150, room),
           std::min(fontMetrics().lineSpacing() * 42, display.height() - frames * 2));
    move(display.left() + std::min(room - width(), (display.width() - width()) / 2),
         display.top() + (display.height() - height()) / 2);
}

void FormGeRenChengJi::restoreSizes()
{
    const QSettings settings;
    if (!restoreGeometry(settings.value(geometryKey).toByteArray()))
        placeBesidePhoto();
    m_sides->restoreState(settings.value(sidesKey).toByteArray());
    if (settings.contains(gridHeightKey))
        m_right->setGridHeight(settings.value(gridHeightKey).toInt());
}

void FormGeRenChengJi::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        QSettings settings;
        settings.setValue(geometryKey, saveGeometry());
        settings.setValue(sidesKey, m_sides->saveState());
        settings.setValue(gridHeightKey, m_right->gridHeight());
    }
    Screen::hideEvent(event);
}

void FormGeRenChengJi::resizeEvent(QResizeEvent* event)
{
    Screen::resizeEvent(event);
    redraw();
}

/// The chart has another size.
void FormGeRenChengJi::redraw()
{
    if (!ChartReady || isMinimized())
        return;
    const CommandScope command(m_dialogs);
    HuiTu();
}

void FormGeRenChengJi::ShowStuTree()
{
    const Trap trap{" - Sub ShowStuTree/FormGeRenChenJi"};
    trap([&] { m_tree->setTree(library::readStudentTree(m_library.Conn)); });
}

void FormGeRenChengJi::TreeView1_Click()
{
    const CommandScope command(m_dialogs);
    ShowSel();
}

/// What cannot be read fails where it is read next, with that routine's tag.
bool FormGeRenChengJi::isThere(qint64 id)
{
    bool found = true;
    Trap::silent()([&] { found = m_library.students.classOf(id).has_value(); });
    return found;
}

void FormGeRenChengJi::ShowSel()
{
    const qint64 id = m_tree->selected().value_or(0);
    if (id == 0)
        return;
    if (!isThere(id))
        return runtime::warn(u"成绩库里已经没有这名学生了。请关闭这个窗口，重新打开。"_s);
    const bool hadFocus = isActiveWindow();
    setWindowTitle(studentTitle(m_library, id));
    m_student.ShowGeRenCJ(id);
    m_right->exams()->refresh();
    if (!m_student.StuName.isNull())
        FormZP->setWindowTitle(m_student.StuName.text());
    FormZP->LoadPic(library::studentPhoto(m_library, id));
    HuiTu();
    if (hadFocus)
        activateWindow();
}

void FormGeRenChengJi::HuiTu()
{
    const Trap trap{" - Sub HuiTu/FormGeRenChenJi"};
    ChartReady = true;
    trap([&] {
        RankChartRequest request =
            readRanks(m_library, m_student, Picture2->ticked(), Picture2->kind());
        request.width = Picture1->twips().width();
        request.height = Picture1->twips().height();
        Picture1->show(rankChart(request));
    });
}

void FormGeRenChengJi::Command1_MouseUp(int Index)
{
    const CommandScope command(m_dialogs);
    const QString color = runtime::GetColor(Picture2->color(Index), u"选择颜色"_s);
    if (color != u"err"_s) {
        Picture2->setColor(Index, color.toInt());
        m_colors.setColor(Index, color.toInt());
    }
    HuiTu();
}

bool FormGeRenChengJi::SavePic(const QString& path)
{
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    const bool saved = Picture1->picture().save(&bytes, "BMP")
                       && Trap::silent()([&] { writeWhole(path, bytes.data()); });
    if (!saved)
        runtime::warn(u"图片保存失败！"_s);
    return saved;
}

void FormGeRenChengJi::report(ReportContent content)
{
    wydc(m_applications, m_library.paths(), m_student.MSFlexGrid1, Picture1->shownName(), content,
         [this](const QString& path) { return SavePic(path); });
}

void FormGeRenChengJi::tDCCJ_Click()
{
    report(ReportContent::Exams);
}

void FormGeRenChengJi::tDCSY_Click()
{
    report(ReportContent::ExamsAndChart);
}

void FormGeRenChengJi::tDCTP_Click()
{
    const QString file = runtime::ShowFileDialog(u"位图(*.bmp)|*.bmp|"_s, runtime::FileMode::Save);
    if (!file.isEmpty())
        SavePic(file);
}

void FormGeRenChengJi::copyPicture()
{
    QGuiApplication::clipboard()->setImage(Picture1->picture());
}

void FormGeRenChengJi::exportClass()
{
    const Trap trap{" - Sub ExportClass/FormGeRenChenJi"};
    std::optional<runtime::Value> classNumber;
    if (!trap([&] { classNumber = m_library.students.classOf(m_student.StuID); }))
        return;
    if (!classNumber)
        return runtime::warn(u"请先在左边选择一名学生，导出的是他所在的班。"_s);
    const QString target = askClassChartsTarget(classNumber->text());
    if (target.isEmpty())
        return;
    widgets::ScreenProgress progress(this);
    exportClassCharts(m_library, {classNumber->toDouble(), Picture2->ticked(), Picture2->kind()},
                      target, progress);
}

} // namespace individual
