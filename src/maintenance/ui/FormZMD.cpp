#include "maintenance/ui/FormZMD.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include "maintenance/TeacherPick.h"
#include "platform/runtime/Trap.h"
#include "platform/widgets/Unsaved.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;
using widgets::button;
using widgets::CommandScope;

FormZMD::FormZMD(runtime::AppPaths paths, widgets::ScreenDialogs& dialogs, QWidget* parent)
    : Screen(u"FormZMD"_s, u"修改教师总名单"_s, parent),
      m_paths(std::move(paths)),
      m_dialogs(dialogs)
{
    makeWidgets();
    Form_Load();
}

void FormZMD::makeWidgets()
{
    Text1 = widgets::named(new QPlainTextEdit(this), u"Text1"_s, u"教师总名单"_s);
    Text1->setTabChangesFocus(true);
    Command1 = button(u"Command1"_s, u"保存(&S)"_s, this);
    QPushButton* Command2 = button(u"Command2"_s, u"退出(&X)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1);
    buttons->addWidget(Command2);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(widgets::label(
        u"Label1"_s, u"格式为：科目_教师名\n每行一位教师，位置任意。"_s, Text1, this));
    layout->addWidget(Text1, 1);
    layout->addLayout(buttons);
    resize(fontMetrics().averageCharWidth() * 50, fontMetrics().lineSpacing() * 26);
    connect(Command1, &QPushButton::clicked, this, &FormZMD::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
}

/// A file that cannot be read must not be replaced by what is typed without it.
void FormZMD::Form_Load()
{
    const Trap trap{" - Private Sub Form_Load/FormZMD"};
    const bool isRead = trap([&] { Text1->setPlainText(readMasterList(m_paths)); });
    Command1->setEnabled(isRead);
    Text1->setReadOnly(!isRead);
    m_stored = Text1->toPlainText();
}

void FormZMD::Command1_Click()
{
    const CommandScope command(m_dialogs);
    save();
}

bool FormZMD::save()
{
    const Trap trap{" - Private Sub Command1_Click/FormZMD"};
    return trap([&] {
        writeMasterList(m_paths, Text1->toPlainText());
        m_stored = Text1->toPlainText();
    });
}

bool FormZMD::mayLeave()
{
    const CommandScope command(m_dialogs);
    return Text1->toPlainText() == m_stored
           || widgets::settleUnsaved(u"教师总名单有改动，还没有保存。"_s,
                                     [this] { return save(); });
}

} // namespace maintenance
