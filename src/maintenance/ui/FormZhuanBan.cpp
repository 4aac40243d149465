#include "maintenance/ui/FormZhuanBan.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "maintenance/SchoolClasses.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;
using widgets::button;
using widgets::label;
using widgets::named;

namespace {

constexpr int lastNumber = 99;

QComboBox* numberBox(const QString& name, const QString& accessibleName, QWidget* parent)
{
    auto* box = named(new QComboBox(parent), name, accessibleName);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    return box;
}

void addNumbers(QComboBox* box)
{
    for (int number = 1; number <= lastNumber; ++number)
        box->addItem(QString::number(number));
}

} // namespace

FormZhuanBan::FormZhuanBan(library::ScoreLibrary& scoreLibrary, QWidget* parent)
    : Screen(u"FormZhuanBan"_s, u"转班"_s, parent), m_library(scoreLibrary)
{
    makeWidgets();
    Form_Load();
    connect(Combo4, &QComboBox::activated, this, &FormZhuanBan::Combo4_Click);
}

void FormZhuanBan::makeWidgets()
{
    Combo1 = numberBox(u"Combo1"_s, u"班级"_s, this);
    Combo2 = numberBox(u"Combo2"_s, u"学号"_s, this);
    Combo3 = named(new QLineEdit(this), u"Combo3"_s, u"姓名"_s);
    Combo7 = named(new QComboBox(this), u"Combo7"_s, u"做什么"_s);
    Combo4 = numberBox(u"Combo4"_s, u"另一个班级"_s, this);
    Combo5 = numberBox(u"Combo5"_s, u"另一个学号"_s, this);
    Combo6 = named(new QLineEdit(this), u"Combo6"_s, u"另一个姓名"_s);
    auto* layout = new QGridLayout(this);
    layOut(layout, 0, {Combo1, Combo2, Combo3});
    layout->addWidget(Combo7, 1, 0, 1, 2);
    layOut(layout, 2, {Combo4, Combo5, Combo6});
    QPushButton* Command1 = button(u"Command1"_s, u"执行(&E)"_s, this);
    Command1->setEnabled(false);
    Command1->setToolTip(u"本窗口暂不执行"_s);
    QPushButton* Command2 = button(u"Command2"_s, u"退出(&X)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1);
    buttons->addWidget(Command2);
    layout->addLayout(buttons, 3, 0, 1, 5);
    addButtonMoves(layout);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
}

void FormZhuanBan::addButtonMoves(QGridLayout* layout)
{
    QPushButton* buttonMoves = button(u"buttonMoves"_s, u"学生调整(&A)…"_s, this);
    const QString hint = u"要移动、交换或删除个别学生，请用："_s;
    layout->addWidget(label(u"LabelMoves"_s, hint, buttonMoves, this), 4, 0, 1, 4);
    layout->addWidget(buttonMoves, 4, 4);
    connect(buttonMoves, &QPushButton::clicked, this, &FormZhuanBan::movesRequested);
}

/// A class, a number and a name, each with its word behind or in front of it.
void FormZhuanBan::layOut(QGridLayout* layout, int row, const Student& student)
{
    const QString suffix = QString::number(row / 2 + 1);
    layout->addWidget(student.classBox, row, 0);
    layout->addWidget(label(u"LabelClass"_s + suffix, u"班"_s, student.classBox, this), row, 1);
    layout->addWidget(student.numberBox, row, 2);
    layout->addWidget(label(u"LabelNumber"_s + suffix, u"号"_s, student.numberBox, this), row, 3);
    layout->addWidget(student.nameBox, row, 4);
}

void FormZhuanBan::Form_Load()
{
    const Trap trap{" - Private Sub Form_Load/FormZhuanBan"};
    Combo7->addItems({u"转到"_s, u"交换"_s, u"删除"_s});
    trap([&] {
        const QStringList classes = classesOfStudents(m_library.Conn);
        Combo1->addItems(classes);
        Combo4->addItems(classes);
    });
    addNumbers(Combo2);
    // Without an entry its text is empty, too.
    for (QComboBox* box : {Combo1, Combo2, Combo4, Combo5})
        box->setCurrentIndex(-1);
}

/// The numbers go to the list of the first pair, though the class is that of the second.
void FormZhuanBan::Combo4_Click()
{
    const Trap trap{" - Private Sub Combo4_Click/FormZhuanBan"};
    trap([&] {
        Combo5->clear();
        Combo5->clearEditText();
        Combo6->clear();
        if (Combo7->currentText() != u"转到"_s)
            addNumbers(Combo2);
    });
}

} // namespace maintenance
