#include "library/ui/FormNew.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "library/ui/FormXiuGaiKeMu.h"

namespace library {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::CommandScope;
using widgets::label;
using widgets::named;

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
    List1 = named(new QListWidget(this), u"List1"_s, u"请为新成绩库选择科目"_s);
    List1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    List1->setToolTip(u"按下Ctrl键或Shift键可多选"_s);
    Text1 = named(new QLineEdit(this), u"Text1"_s, u"总分公式"_s);
    // For reading only: nothing typed here would go into the library.
    Text1->setReadOnly(true);
    Command1 = button(u"Command1"_s, u"确定(&O)"_s, this);
    Command2 = button(u"Command2"_s, u"取消(&C)"_s, this);
    Command3 = button(u"Command3"_s, u"修改科目(&E)"_s, this);
    auto* Label2 =
        label(u"Label2"_s, u"其中末尾含[总分]表示需要设置相应公式计算生成"_s, nullptr, this);
    Label2->setWordWrap(true);
    auto* layout = new QGridLayout(this);
    layout->addWidget(label(u"Label1"_s, u"请为新成绩库选择科目"_s, List1, this), 0, 0, 1, 3);
    layout->addWidget(List1, 1, 0, 1, 3);
    layout->addWidget(Label2, 2, 0, 1, 3);
    List2 = addFormulaList(u"List2"_s, u"总分(&Z)"_s, layout, 0);
    List3 = addFormulaList(u"List3"_s, u"公式(&G)"_s, layout, 1);
    layout->addWidget(label(u"LabelFormula"_s, u"总分公式(&F)"_s, Text1, this), 5, 0);
    layout->addWidget(Text1, 5, 1, 1, 2);
    layout->addWidget(Command3, 6, 0);
    layout->addWidget(Command1, 6, 1);
    layout->addWidget(Command2, 6, 2);
    layout->setRowStretch(1, 1);
    setTabOrder(List1, List2);
    setTabOrder(List2, List3);
    setTabOrder(List3, Text1);
    resize(fontMetrics().averageCharWidth() * 60, fontMetrics().lineSpacing() * 32);
}

/// A low list of what the formula file holds; the formulas are wider than the totals.
QListWidget* FormNew::addFormulaList(const QString& name, const QString& caption,
                                     QGridLayout* layout, int column)
{
    auto* list = named(new QListWidget(this), name, {});
    list->setMaximumHeight(fontMetrics().lineSpacing() * 6);
    const int columns = column == 0 ? 1 : 2;
    layout->addWidget(label(u"Label"_s + name, caption, list, this), 3, column, 1, columns);
    layout->addWidget(list, 4, column, 1, columns);
    return list;
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

QStringList FormNew::selectedSubjects() const
{
    QStringList subjects;
    for (int i = 0; i < List1->count(); ++i) {
        if (List1->item(i)->isSelected())
            subjects.append(List1->item(i)->text());
    }
    return subjects;
}

void FormNew::Command1_Click()
{
    const CommandScope command(m_dialogs);
    const QStringList subjects = selectedSubjects();
    if (!NewLibrary::checkSelected(subjects))
        return;
    const QString path = runtime::ShowFileDialog(u"成绩库|*.CJK"_s, runtime::FileMode::Save);
    if (m_newLibrary.createAsked(subjects, path))
        Q_EMIT created();
}

void FormNew::Command3_Click()
{
    FormXiuGaiKeMu(m_library.paths(), this).exec();
    init();
}

} // namespace library
