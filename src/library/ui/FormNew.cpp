#include "library/ui/FormNew.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "library/ui/FormXiuGaiKeMu.h"
#include "platform/widgets/CaptionedList.h"

namespace library {

using namespace Qt::StringLiterals;
using widgets::addList;
using widgets::button;
using widgets::CommandScope;
using widgets::label;
using widgets::named;

const QString LibFilter = u"成绩库|*.CJK"_s;

FormNew::FormNew(ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs, QWidget* parent)
    : Screen(u"FormNew"_s, u"新建成绩库"_s, parent),
      m_newLibrary(scoreLibrary),
      m_library(scoreLibrary),
      m_dialogs(dialogs)
{
    build();
    connect(List1, &QListWidget::itemClicked, this, &FormNew::List1_Click);
    connect(List1, &QListWidget::currentRowChanged, this, &FormNew::List1_Click);
    connect(Command1, &QPushButton::clicked, this, &FormNew::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
    connect(Command3, &QPushButton::clicked, this, &FormNew::Command3_Click);
    init();
}

void FormNew::build()
{
    auto* layout = new QGridLayout(this);
    makeLists(layout);
    Text1 = named(new QLineEdit(this), u"Text1"_s, u"总分公式"_s);
    // For reading only: nothing typed here would go into the library.
    Text1->setReadOnly(true);
    Command1 = button(u"Command1"_s, u"确定(&O)"_s, this);
    Command2 = button(u"Command2"_s, u"取消(&C)"_s, this);
    Command3 = button(u"Command3"_s, u"修改科目(&E)"_s, this);
    layout->addWidget(label(u"LabelFormula"_s, u"总分公式(&F)"_s, Text1, this), 5, 0);
    layout->addWidget(Text1, 5, 1, 1, 2);
    layout->addWidget(Command3, 6, 0);
    layout->addWidget(Command1, 6, 1);
    layout->addWidget(Command2, 6, 2);
    layout->setRowStretch(1, 1);
    resize(fontMetrics().averageCharWidth() * 60, fontMetrics().lineSpacing() * 32);
}

/// The subjects above; below them, low, what the formula file holds. Formulas are wider than
/// totals.
void FormNew::makeLists(QGridLayout* layout)
{
    List1 = addList(layout, {.columns = 3}, u"List1"_s, u"请为新成绩库选择科目"_s, u"Label1"_s);
    List1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    List1->setToolTip(widgets::multiSelectHint());
    auto* Label2 =
        label(u"Label2"_s, u"其中末尾含[总分]表示需要设置相应公式计算生成"_s, nullptr, this);
    Label2->setWordWrap(true);
    layout->addWidget(Label2, 2, 0, 1, 3);
    List2 = addList(layout, {.row = 3}, u"List2"_s, u"总分(&Z)"_s);
    List3 = addList(layout, {.row = 3, .column = 1, .columns = 2}, u"List3"_s, u"公式(&G)"_s);
    for (QListWidget* list : {List2, List3})
        list->setMaximumHeight(fontMetrics().lineSpacing() * 6);
}

void FormNew::init()
{
    m_newLibrary.init();
    List1->clear();
    List1->addItems(m_newLibrary.lists.subjects);
    List2->clear();
    List2->addItems(m_newLibrary.lists.totals);
    List3->clear();
    List3->addItems(m_newLibrary.lists.formulas);
    Text1->clear();
}

void FormNew::List1_Click()
{
    Text1->clear();
    if (const QListWidgetItem* clicked = List1->currentItem())
        Text1->setText(m_newLibrary.formulaLine(clicked->text()));
}

void FormNew::Command1_Click()
{
    const CommandScope command(m_dialogs);
    const QStringList subjects = widgets::selectedTexts(List1);
    if (!NewLibrary::checkSelected(subjects))
        return;
    const QString path = runtime::ShowFileDialog(LibFilter, runtime::FileMode::Save);
    if (m_newLibrary.createAsked(subjects, path))
        Q_EMIT created();
}

void FormNew::Command3_Click()
{
    FormXiuGaiKeMu(m_library.paths(), this).exec();
    init();
}

} // namespace library
