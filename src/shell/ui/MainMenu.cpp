#include "shell/ui/MainMenu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

namespace shell {

using namespace Qt::StringLiterals;
using workbench::Available;

namespace {

struct Entry
{
    const char16_t* menu;
    /// A name of nothing is a separator.
    const char16_t* name;
    const char16_t* caption;
};

constexpr Entry entries[] = {
    {u"mF", u"mfNew", u"新建成绩库(&N)"},
    {u"mF", u"mfOpen", u"打开成绩库(&O)"},
    {u"mF", nullptr, nullptr},
    {u"mF", u"mDelKM", u"删除科目(&D)"},
    {u"mF", u"mfSaveAs", u"压缩数据库(&S)"},
    {u"mF", nullptr, nullptr},
    {u"mF", u"mfREC0", u"(最近打开的文件)"},
    {u"mF", u"mfREC1", u"2"},
    {u"mF", u"mfREC2", u"3"},
    {u"mF", u"mfREC3", u"4"},
    {u"mF", u"mfREC4", u"5"},
    {u"mF", u"mfREC5", u"6"},
    {u"mF", nullptr, nullptr},
    {u"mF", u"Mfexit", u"退出(&X)"},
    {u"mF", nullptr, nullptr},
    {u"mF", u"mfRestore", u"恢复备份(&R)…"},
    {u"mF", u"mfUndoImport", u"撤消上次导入(&U)"},
    {u"Medit", u"meLook", u"浏览考试(&L)"},
    {u"Medit", nullptr, nullptr},
    {u"Medit", u"meDRKS", u"导入考试(&I)"},
    {u"Medit", nullptr, nullptr},
    {u"Medit", u"meJCCJ", u"检查成绩(&J)"},
    {u"Medit", u"meXGCJ", u"修改成绩(&X)"},
    {u"Medit", nullptr, nullptr},
    // These stand in the menu without an action of their own.
    {u"Medit", u"syks", u"上移考试(&U)"},
    {u"Medit", u"xyks", u"下移考试(&D)"},
    {u"Medit", u"meKSGM", u"考试改名(&G)"},
    {u"Medit", u"meSCKS", u"删除考试(&S)"},
    {u"Medit", nullptr, nullptr},
    {u"Medit", u"meExamDetails", u"考试信息(&K)…"},
    {u"Medit", u"meErase", u"彻底删除所选考试(&R)…"},
    {u"Medit", u"tidyWorkbook", u"整理工作簿(&Z)…"},
    {u"mSJWH", u"meDRLB", u"导入信息(&I)"},
    {u"mSJWH", u"meXXXG", u"修改信息(&X)"},
    {u"mSJWH", nullptr, nullptr},
    {u"mSJWH", u"meSZTP", u"设置图片(&T)"},
    {u"mSJWH", u"meJCTP", u"检查图片(&J)"},
    {u"mSJWH", nullptr, nullptr},
    {u"mSJWH", u"meJSMD", u"教师名单(&M)"},
    {u"mSJWH", u"meZFGS", u"总分设置(&Z)"},
    {u"mSJWH", nullptr, nullptr},
    {u"mSJWH", u"mtSZWL", u"设置文理(&W)"},
    {u"mSJWH", u"mtSJFB", u"重新分班(&F)"},
    {u"mSJWH", u"mtZB", u"个别转班(&B)"},
    {u"mSJWH", nullptr, nullptr},
    {u"mSJWH", u"mtStudentMoves", u"学生调整(&A)…"},
    {u"mSJWH", u"mtAddSubject", u"添加科目(&K)…"},
    {u"mSJWH", u"mtAddStudent", u"添加学生(&N)…"},
    {u"mSJCL", u"mSHowInfo", u"显示基本信息(&S)"},
    {u"mSJCL", nullptr, nullptr},
    {u"mSJCL", u"mFXSZ", u"分析设置(&F)"},
    {u"mSJCL", nullptr, nullptr},
    {u"mSJCL", u"msGRFX", u"个人分析(&G)"},
    // Stands in the menu without an action of its own.
    {u"mSJCL", u"mZHFX", u"综合分析(&Z)"},
    {u"mSJCL", nullptr, nullptr},
    {u"mSJCL", u"mtEXCEL", u"导出到Excel(&E)"},
    {u"mSJCL", nullptr, nullptr},
    {u"mSJCL", u"figureStudents", u"查看名单(&L)"},
    {u"mSJCL", u"itemExplanation", u"口径(&K)…"},
};

} // namespace

MainMenu::MainMenu(QMenuBar* bar)
{
    addMenu(bar, u"mF"_s, u"文件(&F)"_s);
    addMenu(bar, u"Medit"_s, u"考试维护(&E)"_s);
    addMenu(bar, u"mSJWH"_s, u"数据维护(&D)"_s);
    addMenu(bar, u"mSJCL"_s, u"数据处理(&P)"_s);
    for (const Entry& entry : entries) {
        QMenu* menu = m_menus.value(QString::fromUtf16(entry.menu));
        if (!entry.name)
            menu->addSeparator();
        else
            addItem(menu, QString::fromUtf16(entry.name), QString::fromUtf16(entry.caption));
    }
    m_items.value(u"mfOpen"_s)->setShortcut(QKeySequence::Open);
    m_items.value(u"Mfexit"_s)->setShortcut(QKeySequence::Quit);
    for (const auto& [name, caption] :
         {std::pair{u"Hzt"_s, u"帮助(&H)"_s}, std::pair{u"Habout"_s, u"关于软件(&A)"_s},
          std::pair{u"mUpdate"_s, u"软件升级(&U)"_s}}) {
        QAction* action = bar->addAction(caption);
        action->setObjectName(name);
        m_items.insert(name, action);
    }
    m_items.value(u"Hzt"_s)->setShortcut(QKeySequence::HelpContents);
    setLibraryCommands(Available::No);
}

QMenu* MainMenu::addMenu(QMenuBar* bar, const QString& name, const QString& caption)
{
    QMenu* menu = bar->addMenu(caption);
    menu->setObjectName(name);
    menu->setToolTipsVisible(true);
    m_menus.insert(name, menu);
    return menu;
}

void MainMenu::addItem(QMenu* menu, const QString& name, const QString& caption)
{
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    m_items.insert(name, action);
}

void MainMenu::setLibraryCommands(Available available)
{
    const bool open = available == Available::Yes;
    for (const QString& name : {u"Medit"_s, u"mSJWH"_s, u"mSJCL"_s})
        m_menus.value(name)->setEnabled(open);
    for (const QString& name : {u"mDelKM"_s, u"mfSaveAs"_s, u"mfUndoImport"_s})
        m_items.value(name)->setEnabled(open);
}

} // namespace shell
