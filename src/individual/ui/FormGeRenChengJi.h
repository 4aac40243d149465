#pragma once

#include "individual/ChartColors.h"
#include "individual/StudentExams.h"
#include "individual/StudentReport.h"
#include "library/ui/FormZP.h"
#include "library/ui/StudentTreePanel.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"
#include "workbooks/model/Application.h"

class QMenu;
class QSplitter;

namespace individual {

class ChartSurface;
class ExamsAndChart;
class SubjectPanel;

/// "学生成绩分析": a student's exams as a table and his ranks across them as a chart.
class FormGeRenChengJi : public widgets::Screen
{
    Q_OBJECT

public:
    FormGeRenChengJi(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                     excel::Applications& applications, QWidget* parent);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void build();
    QWidget* makeLeftSide();
    void buildMenu();
    void addCommand(const QString& name, const QString& caption,
                    void (FormGeRenChengJi::*command)());
    void connectControls();
    void placeBesidePhoto();
    void restoreSizes();
    void Form_Load();
    void ShowStuTree();
    void redraw();
    void TreeView1_Click();
    void ShowSel();
    bool isThere(qint64 id);
    void HuiTu();
    void Command1_MouseUp(int Index);
    bool SavePic(const QString& path);
    void report(ReportContent content);
    void tDCCJ_Click();
    void tDCTP_Click();
    void tDCSY_Click();
    void copyPicture();
    void exportClass();

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    excel::Applications& m_applications;
    StudentExams m_student;
    ChartColors m_colors;
    /// A chart was drawn, and a new size of the window draws it anew.
    bool ChartReady = false;
    library::FormZP* FormZP = nullptr;
    library::StudentTreePanel* m_tree = nullptr;
    SubjectPanel* Picture2 = nullptr;
    ExamsAndChart* m_right = nullptr;
    ChartSurface* Picture1 = nullptr;
    QSplitter* m_sides = nullptr;
    QMenu* tDC = nullptr;
};

} // namespace individual
