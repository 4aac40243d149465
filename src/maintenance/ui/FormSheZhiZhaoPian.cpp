#include "maintenance/ui/FormSheZhiZhaoPian.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include "maintenance/PhotoRun.h"
#include "platform/widgets/ScreenProgress.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::label;
using widgets::named;

FormSheZhiZhaoPian::FormSheZhiZhaoPian(library::ScoreLibrary& scoreLibrary,
                                       widgets::ScreenDialogs& dialogs, QWidget* parent)
    : Screen(u"FormSheZhiZhaoPian"_s, u"设置照片"_s, parent),
      m_library(scoreLibrary),
      m_dialogs(dialogs)
{
    makeWidgets();
    layOut();
    connect(Text1, &QLineEdit::textChanged, this,
            [this](const QString& text) { PhotoFolder = text; });
    connect(Label2, &QToolButton::clicked, this, &FormSheZhiZhaoPian::Label2_Click);
    connect(Command1, &QPushButton::clicked, this, &FormSheZhiZhaoPian::Command1_Click);
}

void FormSheZhiZhaoPian::makeWidgets()
{
    Text1 = named(new QLineEdit(this), u"Text1"_s, u"学生照片所在的文件夹"_s);
    Text1->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
    // Flat, raised under the mouse, sunken while it is pressed.
    Label2 = named(new QToolButton(this), u"Label2"_s, u"浏览文件夹"_s);
    Label2->setText(u"…"_s);
    Label2->setToolTip(u"浏览文件夹"_s);
    Label2->setAutoRaise(true);
    Label2->setFocusPolicy(Qt::StrongFocus);
    CheckBackup = new library::BackupBox(u"设置前备份成绩库(&K)"_s, this);
    Command1 = button(u"Command1"_s, u"确定(&O)"_s, this);
}

void FormSheZhiZhaoPian::layOut()
{
    QLabel* note =
        label(u"Label1"_s,
              u"设置的文件夹中要包含每个班 班号 的文件夹，每个学生的照片放在本班的文件夹中，"
              "照片名可以是学号或姓名，照片将全部保存在数据库中，因此要求照片大小不宜过大。"_s,
              nullptr, this);
    note->setWordWrap(true);
    auto* layout = new QGridLayout(this);
    layout->addWidget(label(u"Label3"_s, u"学生照片所在的文件夹(&F)"_s, Text1, this), 0, 0, 1, 2);
    layout->addWidget(Text1, 1, 0);
    layout->addWidget(Label2, 1, 1);
    layout->addWidget(note, 2, 0, 1, 2);
    layout->addWidget(CheckBackup, 3, 0, 1, 2);
    layout->addWidget(Command1, 4, 0, 1, 2, Qt::AlignRight);
    layout->setColumnStretch(0, 1);
}

void FormSheZhiZhaoPian::Label2_Click()
{
    m_dialogs.startIn(PhotoFolder.isEmpty() ? m_library.LibFolder : PhotoFolder);
    // Without a choice it is empty, and the box too.
    Text1->setText(runtime::OpenDirectoryTV(u"选择学生照片所在的文件夹"_s));
}

void FormSheZhiZhaoPian::Command1_Click()
{
    const widgets::CommandScope command(m_dialogs);
    widgets::ScreenProgress progress(this);
    PhotoRun(m_library, m_photos, progress).run(PhotoFolder, CheckBackup->backup());
}

} // namespace maintenance
