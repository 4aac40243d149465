#include "maintenance/ui/FormDelKM.h"

#include <QGridLayout>
#include <QListWidget>
#include <QPushButton>

#include "library/ui/BackupBox.h"
#include "platform/widgets/CaptionedList.h"
#include "platform/widgets/ScreenProgress.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::CommandScope;

FormDelKM::FormDelKM(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                     QWidget* parent)
    : Screen(u"FormDelKM"_s, u"删除科目"_s, parent), m_removal(scoreLibrary), m_dialogs(dialogs)
{
    makeWidgets();
    ListKM->addItems(m_removal.columns());
    // Before it is told that they were removed.
    connect(&scoreLibrary, &library::ScoreLibrary::changed, this,
            [this] { qDeleteAll(ListKM->selectedItems()); });
}

void FormDelKM::makeWidgets()
{
    auto* layout = new QGridLayout(this);
    ListKM = widgets::addMultiList(layout, {}, u"ListKM"_s, u"选择要删除的科目(&M)"_s, u"Label4"_s);
    CheckBackup = new library::BackupBox(u"删除前备份成绩库(&K)"_s, this);
    layout->addWidget(CheckBackup, 3, 0);
    QPushButton* Command1 = button(u"Command1"_s, u"删除(&D)"_s, this);
    QPushButton* Command2 = button(u"Command2"_s, u"退出(&X)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1);
    buttons->addWidget(Command2);
    layout->addLayout(buttons, 4, 0);
    connect(Command1, &QPushButton::clicked, this, &FormDelKM::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
}

void FormDelKM::Command1_Click()
{
    const CommandScope command(m_dialogs);
    widgets::ScreenProgress progress(this);
    m_removal.run(widgets::selectedTexts(ListKM), progress, CheckBackup->backup());
}

} // namespace maintenance
