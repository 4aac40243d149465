#include "library/ui/FormXiuGaiKeMu.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/runtime/TextFile.h"
#include "platform/runtime/Trap.h"
#include "platform/widgets/CaptionedList.h"

namespace library {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::named;

FormXiuGaiKeMu::FormXiuGaiKeMu(const runtime::AppPaths& paths, QWidget* parent)
    : Screen(u"FormXiuGaiKeMu"_s, u"修改科目"_s, parent), m_paths(paths)
{
    auto* layout = new QVBoxLayout(this);
    makeLists(layout);
    QPushButton* Command1 = button(u"Command1"_s, u"确定(&O)"_s, this);
    QPushButton* Command2 = button(u"Command2"_s, u"取消(&C)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1);
    buttons->addWidget(Command2);
    layout->addLayout(buttons);
    connect(Command1, &QPushButton::clicked, this, &FormXiuGaiKeMu::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
    Form_Load();
}

void FormXiuGaiKeMu::makeLists(QVBoxLayout* layout)
{
    auto* lists = new QGridLayout;
    layout->addLayout(lists);
    auto* frame = new QGroupBox(u"直接输入科目名称，一行一个科目，忽略空行"_s, this);
    Text2 = named(new QPlainTextEdit(frame), u"Text2"_s, u"科目名称，一行一个科目"_s);
    Text2->setTabChangesFocus(true);
    (new QVBoxLayout(frame))->addWidget(Text2);
    lists->addWidget(frame, 0, 0, 2, 1);
    List1 = widgets::addList(lists, {.column = 1}, u"List1"_s, u"原有科目(&K)"_s);
    lists->setColumnStretch(0, 2);
    lists->setColumnStretch(1, 1);
}

void FormXiuGaiKeMu::Form_Load()
{
    QStringList lines;
    runtime::ReadTxtSet(m_paths.dataFile(u"科目.txt"_s), lines);
    List1->addItems(lines);
    QString text;
    for (const QString& line : std::as_const(lines))
        text += line + u'\n';
    Text2->setPlainText(text);
}

void FormXiuGaiKeMu::Command1_Click()
{
    const runtime::Trap trap{" - Private Sub Command1_Click/FormXiuGaiKeMu"};
    trap([&] { runtime::writeTextFile(m_paths.dataFile(u"科目.txt"_s), Text2->toPlainText()); });
}

} // namespace library
