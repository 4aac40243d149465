#include "shell/ui/frmAbout.h"

#include <QApplication>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

#include "platform/widgets/ScreenDialogs.h"

namespace shell {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::label;
using widgets::named;

namespace {

const QString description = u"管理一所中学的学生和历次考试成绩：从电子表格导入学生与成绩，"
                            "计算总分、名次和标准分，按班级统计和对比，查看每个学生的成绩变化，"
                            "并导出便于打印的报表。"_s;

} // namespace

frmAbout::frmAbout(QWidget* parent) : Screen(u"frmAbout"_s, u"关于软件"_s, parent)
{
    QPushButton* close = button(u"Command1"_s, u"确定(&O)"_s, this);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto* layout = new QGridLayout(this);
    layout->addWidget(makePicture(), 0, 0, 3, 1, Qt::AlignTop);
    layout->addWidget(makeTitle(), 0, 1);
    layout->addWidget(
        label(u"LabelVersion"_s, u"版本 "_s + QApplication::applicationVersion(), nullptr, this), 1,
        1);
    layout->addWidget(makeDescription(), 2, 1);
    layout->addWidget(close, 3, 1, Qt::AlignRight);
    layout->setRowStretch(2, 1);
    layout->setColumnStretch(1, 1);
    close->setFocus();
}

/// The program's icon; no room is taken without one.
QWidget* frmAbout::makePicture()
{
    auto* picture = named(new QLabel(this), u"Picture1"_s, widgets::ProductTitle);
    const int side = fontMetrics().lineSpacing() * 5;
    picture->setPixmap(QApplication::windowIcon().pixmap(QSize(side, side), devicePixelRatioF()));
    return picture;
}

QWidget* frmAbout::makeTitle()
{
    QLabel* heading = label(u"LabelTitle"_s, widgets::ProductTitle, nullptr, this);
    QFont large = heading->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    heading->setFont(large);
    return heading;
}

QWidget* frmAbout::makeDescription()
{
    QLabel* text = label(u"LabelDescription"_s, description, nullptr, this);
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text->setMinimumWidth(fontMetrics().averageCharWidth() * 44);
    return text;
}

} // namespace shell
