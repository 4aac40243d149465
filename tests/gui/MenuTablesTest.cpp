#include <QMenu>
#include <QMenuBar>

#include "gui/AccessKeys.h"
#include "gui/Gallery.h"
#include "shell/ui/MainMenu.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

/// The items of a menu as "name caption", with its separators.
QStringList itemsOf(const QMenu* menu)
{
    QStringList items;
    for (const QAction* action : menu->actions())
        items.append(action->isSeparator()
                         ? u"-"_s
                         : action->objectName() + u' ' + support::withoutKey(action->text()));
    return items;
}

class MenuOfTheGrid : public support::Gallery
{
};

TEST(MenuTree, HasItsItemsAndSeparatorsInOrder)
{
    QMenuBar bar;
    const shell::MainMenu menu(&bar);
    QStringList top;
    for (const QAction* action : bar.actions()) {
        const QObject* item = action->menu() ? static_cast<const QObject*>(action->menu()) : action;
        top.append(item->objectName() + u' ' + support::withoutKey(action->text()));
    }
    EXPECT_EQ(top.join(u'|'), u"mF 文件|Medit 考试维护|mSJWH 数据维护|mSJCL 数据处理|Hzt 帮助|"
                              "Habout 关于软件|mUpdate 软件升级"_s);
    const QMap<QString, QString> expected{
        {u"mF"_s, u"mfNew 新建成绩库|mfOpen 打开成绩库|-|mDelKM 删除科目|mfSaveAs 压缩数据库|-|"
                  "mfREC0 (最近打开的文件)|mfREC1 2|mfREC2 3|mfREC3 4|mfREC4 5|mfREC5 6|-|"
                  "Mfexit 退出|-|mfRestore 恢复备份…|mfUndoImport 撤消上次导入"_s},
        {u"Medit"_s, u"meLook 浏览考试|-|meDRKS 导入考试|-|meJCCJ 检查成绩|meXGCJ 修改成绩|-|"
                     "syks 上移考试|xyks 下移考试|meKSGM 考试改名|meSCKS 删除考试|-|"
                     "meExamDetails 考试信息…|meErase 彻底删除所选考试…|"
                     "tidyWorkbook 整理工作簿…"_s},
        {u"mSJWH"_s, u"meDRLB 导入信息|meXXXG 修改信息|-|meSZTP 设置图片|meJCTP 检查图片|-|"
                     "meJSMD 教师名单|meZFGS 总分设置|-|mtSZWL 设置文理|mtSJFB 重新分班|"
                     "mtZB 个别转班|-|mtStudentMoves 学生调整…|mtAddSubject 添加科目…|"
                     "mtAddStudent 添加学生…"_s},
        {u"mSJCL"_s, u"mSHowInfo 显示基本信息|-|mFXSZ 分析设置|-|msGRFX 个人分析|mZHFX 综合分析|-|"
                     "mtEXCEL 导出到Excel|-|figureStudents 查看名单|itemExplanation 口径…"_s}};
    for (auto it = expected.begin(); it != expected.end(); ++it)
        EXPECT_EQ(itemsOf(menu.menu(it.key())).join(u'|'), it.value());
}

TEST_F(MenuOfTheGrid, HasItsItems)
{
    EXPECT_EQ(itemsOf(open(u"AFormMain"_s).findChild<QMenu*>(u"mTC"_s)),
              (QStringList{u"mMfgToXls 导出到Excel"_s, u"-"_s, u"figureStudents 查看名单"_s}));
}

} // namespace
