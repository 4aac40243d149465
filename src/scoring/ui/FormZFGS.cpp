#include "scoring/ui/FormZFGS.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "platform/widgets/CaptionedList.h"

namespace scoring {

using namespace Qt::StringLiterals;
using widgets::addList;
using widgets::addMultiList;
using widgets::button;
using widgets::CommandScope;
using widgets::label;
using widgets::named;
using widgets::selectedTexts;

FormZFGS::FormZFGS(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                   QWidget* parent)
    : Screen(u"FormZFGS"_s, u"总分公式"_s, parent), m_formulas(scoreLibrary), m_dialogs(dialogs)
{
    makeWidgets();
    Form_Load();
    connectWidgets();
}

void FormZFGS::makeWidgets()
{
    auto* layout = new QGridLayout(this);
    List1 = addMultiList(layout, {.column = 0}, u"List1"_s, u"考试(&K)"_s);
    List2 = addList(layout, {.column = 1}, u"List2"_s, u"总分(&Z)"_s);
    List3 = addMultiList(layout, {.column = 2}, u"List3"_s, u"科目(&M)"_s);
    Text1 = named(new QLineEdit(this), u"Text1"_s, u"总分公式"_s);
    auto* formula = new QHBoxLayout;
    formula->addWidget(label(u"LabelText1"_s, u"公式(&G)"_s, Text1, this));
    formula->addWidget(Text1);
    layout->addLayout(formula, 3, 0, 1, 3);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(button(u"Command1"_s, u"确定(&O)"_s, this));
    // Without a handler on purpose: totals are computed anew from the workbench.
    buttons->addWidget(button(u"Command3"_s, u"重算总分(&R)"_s, this));
    buttons->addWidget(button(u"Command2"_s, u"退出(&X)"_s, this));
    layout->addLayout(buttons, 4, 0, 1, 3);
    resize(fontMetrics().averageCharWidth() * 90, fontMetrics().lineSpacing() * 24);
}

void FormZFGS::connectWidgets()
{
    for (QListWidget* list : {List1, List2}) {
        connect(list, &QListWidget::itemClicked, this, &FormZFGS::ShowGS);
        connect(list, &QListWidget::currentRowChanged, this, &FormZFGS::ShowGS);
    }
    connect(List3, &QListWidget::itemClicked, this, &FormZFGS::List3_Click);
    connect(List3, &QListWidget::itemSelectionChanged, this, &FormZFGS::List3_Click);
    connect(findChild<QPushButton*>(u"Command1"_s), &QPushButton::clicked, this,
            &FormZFGS::Command1_Click);
    connect(findChild<QPushButton*>(u"Command2"_s), &QPushButton::clicked, this, &QDialog::close);
}

void FormZFGS::Form_Load()
{
    m_formulas.load();
    List1->addItems(m_formulas.exams);
    List2->addItems(m_formulas.totals);
    List3->addItems(m_formulas.subjects);
}

void FormZFGS::ShowGS()
{
    // A list that gets the keyboard has a current line before anybody chose one.
    if (List1->selectedItems().isEmpty() || List2->selectedItems().isEmpty())
        return;
    const auto formula =
        m_formulas.ShowGS(List1->currentItem()->text(), List2->currentItem()->text());
    if (formula)
        Text1->setText(*formula);
}

void FormZFGS::List3_Click()
{
    Text1->setText(selectedTexts(List3).join(u'+'));
}

void FormZFGS::Command1_Click()
{
    const CommandScope command(m_dialogs);
    m_formulas.save(selectedTexts(List1), selectedTexts(List2).value(0), Text1->text());
}

} // namespace scoring
