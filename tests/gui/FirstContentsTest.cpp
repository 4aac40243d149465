#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>

#include "gui/Gallery.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

class FirstContents : public support::Gallery
{
};

TEST_F(FirstContents, TheListOfSubjectsHasItsCaptionAtTheFrame)
{
    EXPECT_EQ(open(u"FormXiuGaiKeMu"_s).findChild<QGroupBox*>()->title(),
              u"直接输入科目名称，一行一个科目，忽略空行"_s);
}

QStringList itemsOf(const QWidget& window, const QString& name)
{
    QStringList items;
    const auto* combo = window.findChild<QComboBox*>(name);
    for (int i = 0; combo && i < combo->count(); ++i)
        items.append(combo->itemText(i));
    const auto* list = window.findChild<QListWidget*>(name);
    for (int i = 0; list && i < list->count(); ++i)
        items.append(list->item(i)->text());
    return items;
}

TEST_F(FirstContents, TheWorkbenchBeginsWithItsPrompts)
{
    const QWidget& window = open(u"Panel"_s);
    EXPECT_EQ(itemsOf(window, u"ListXM"_s), (QStringList{u"原始分和名次"_s, u"Z分"_s, u"T分"_s}));
    for (int i = 0; i < 4; ++i) {
        const auto* key = window.findChild<QComboBox*>(u"Combo1_%1"_s.arg(i));
        EXPECT_EQ(key->currentIndex(), -1);
        EXPECT_EQ(key->placeholderText(), u"请选择项目"_s);
        const QString direction = u"Combo2_%1"_s.arg(i);
        EXPECT_EQ(itemsOf(window, direction), (QStringList{u"升序"_s, u"降序"_s}));
        EXPECT_EQ(window.findChild<QComboBox*>(direction)->currentIndex(), 0);
    }
    const auto* items = window.findChild<QComboBox*>(u"Combo3"_s);
    EXPECT_EQ(items->currentIndex(), -1);
    EXPECT_EQ(items->placeholderText(), u"请选择要统计的项目"_s);
    EXPECT_EQ(items->itemText(0), u"高分段、低分段"_s);
}

TEST_F(FirstContents, TheListsOfANewLibraryRunInStep)
{
    const QWidget& window = open(u"FormNew"_s);
    const QStringList totals = itemsOf(window, u"List2"_s);
    EXPECT_FALSE(totals.isEmpty());
    EXPECT_EQ(itemsOf(window, u"List3"_s).size(), totals.size());
    const QStringList subjects = itemsOf(window, u"List1"_s);
    EXPECT_EQ(itemsOf(open(u"FormXiuGaiKeMu"_s), u"List1"_s), subjects);
}

TEST_F(FirstContents, TheGridsHaveTheirHeadings)
{
    for (const auto& [name, headings] :
         {std::pair{u"FormShuRuMF"_s, u"科目|满分"_s}, {u"FormZDYXS"_s, u"项目名称|显示"_s}}) {
        const auto& grid = open(name).findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s)->grid();
        ASSERT_EQ(grid.Cols(), 2);
        EXPECT_EQ(grid.TextMatrix(0, 0) + u'|' + grid.TextMatrix(0, 1), headings);
    }
}

TEST_F(FirstContents, TheImportsSayWhatStandsInTheFirstField)
{
    for (const QString& name : {u"FormDaoRu"_s, u"FormDaoRuXinXi"_s, u"FormDaoRuFenBanXinXi"_s}) {
        const auto* path = open(name).findChild<QLineEdit*>(u"Text1"_s);
        EXPECT_EQ(path->placeholderText(), u"Excel文件路径名"_s);
        EXPECT_EQ(path->accessibleName(), u"Excel文件路径名"_s);
    }
}

} // namespace
