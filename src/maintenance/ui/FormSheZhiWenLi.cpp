#include "maintenance/ui/FormSheZhiWenLi.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "platform/widgets/CaptionedList.h"
#include "platform/widgets/ScreenProgress.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::CommandScope;

FormSheZhiWenLi::FormSheZhiWenLi(library::ScoreLibrary& scoreLibrary,
                                 widgets::ScreenDialogs& dialogs, QWidget* parent)
    : Screen(u"FormSheZhiWenLi"_s, u"设置科类(文理科)"_s, parent),
      m_streams(scoreLibrary),
      m_dialogs(dialogs)
{
    makeWidgets();
    Form_Load();
    connect(Command1, &QPushButton::clicked, this, &FormSheZhiWenLi::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
}

void FormSheZhiWenLi::makeWidgets()
{
    auto* layout = new QGridLayout(this);
    List1 = widgets::addMultiList(layout, {}, u"List1"_s, u"班级(&B)"_s);
    layout->addWidget(widgets::label(u"Label1"_s, u"选中班级科类设置为：理"_s, nullptr, this), 3,
                      0);
    CheckBackup = new library::BackupBox(u"设置前备份成绩库(&K)"_s, this);
    layout->addWidget(CheckBackup, 4, 0);
    Command1 = button(u"Command1"_s, u"确定(&O)"_s, this);
    Command2 = button(u"Command2"_s, u"退出(&X)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1);
    buttons->addWidget(Command2);
    layout->addLayout(buttons, 5, 0);
    resize(fontMetrics().averageCharWidth() * 40, fontMetrics().lineSpacing() * 24);
}

void FormSheZhiWenLi::Form_Load()
{
    const CommandScope command(m_dialogs);
    List1->addItems(m_streams.load());
}

void FormSheZhiWenLi::Command1_Click()
{
    const CommandScope command(m_dialogs);
    const QStringList science = widgets::selectedTexts(List1);
    if (!m_streams.confirmed(science, CheckBackup->backup()))
        return;
    widgets::ScreenProgress progress(this);
    m_streams.set(science, progress, CheckBackup->backup());
}

} // namespace maintenance
