#include "platform/widgets/CaptionedList.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

class CaptionedList : public testing::Test
{
protected:
    QWidget* at(int row, int column)
    {
        const QLayoutItem* item = layout->itemAtPosition(row, column);
        return item ? item->widget() : nullptr;
    }
    QLabel* label(const QString& name) { return screen.findChild<QLabel*>(name); }

    QWidget screen;
    QGridLayout* layout = new QGridLayout(&screen);
};

TEST_F(CaptionedList, StandsBelowItsCaptionWhichLeadsToIt)
{
    QListWidget* list =
        widgets::addList(layout, {.row = 3, .column = 1, .columns = 2}, u"List1"_s, u"科目(&M)"_s);
    EXPECT_EQ(list->objectName(), u"List1"_s);
    EXPECT_EQ(list->accessibleName(), u"科目"_s);
    EXPECT_EQ(list->selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(label(u"LabelList1"_s)->buddy(), list);
    for (const int column : {1, 2}) {
        EXPECT_EQ(at(3, column), label(u"LabelList1"_s));
        EXPECT_EQ(at(4, column), list);
    }
}

TEST_F(CaptionedList, ItsCaptionCanHaveANameOfItsOwn)
{
    const QListWidget* list = widgets::addList(layout, {}, u"List1"_s, u"科目"_s, u"Label1"_s);
    EXPECT_EQ(label(u"Label1"_s)->buddy(), list);
}

TEST_F(CaptionedList, AChoiceOfSeveralHasItsHintBelow)
{
    const QListWidget* list = widgets::addMultiList(layout, {}, u"List1"_s, u"考试(&K)"_s);
    EXPECT_EQ(list->selectionMode(), QAbstractItemView::ExtendedSelection);
    EXPECT_EQ(at(2, 0), label(u"LabelHintList1"_s));
    EXPECT_EQ(label(u"LabelHintList1"_s)->text(), u"按下Ctrl键或Shift键可多选"_s);
}

TEST_F(CaptionedList, TheSelectedTextsComeInListOrder)
{
    QListWidget* list = widgets::addMultiList(layout, {}, u"List1"_s, u"考试"_s);
    list->addItems({u"丙"_s, u"甲"_s, u"乙"_s});
    EXPECT_EQ(widgets::selectedTexts(list), QStringList());
    for (const int row : {2, 0})
        list->item(row)->setSelected(true);
    EXPECT_EQ(widgets::selectedTexts(list), (QStringList{u"丙"_s, u"乙"_s}));
}

} // namespace
