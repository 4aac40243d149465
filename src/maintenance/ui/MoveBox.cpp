#include "maintenance/ui/MoveBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "maintenance/TypedNumber.h"
#include "platform/runtime/Numbers.h"
#include "platform/widgets/Screen.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::label;
using widgets::named;

QPushButton* addBoxButtons(QDialog* box, QVBoxLayout* layout)
{
    QPushButton* ok = button(u"boxOk"_s, u"确定(&O)"_s, box);
    ok->setAutoDefault(true);
    ok->setDefault(true);
    QPushButton* cancel = button(u"boxCancel"_s, u"取消(&C)"_s, box);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
    QObject::connect(ok, &QPushButton::clicked, box, &QDialog::accept);
    QObject::connect(cancel, &QPushButton::clicked, box, &QDialog::reject);
    return ok;
}

MoveTicks::MoveTicks(qsizetype earlierScores, QVBoxLayout* layout, QWidget* parent)
    : CheckScores(
        new QCheckBox(u"以前的 %1 条成绩也改到新的班级和学号(&S)"_s.arg(earlierScores), parent)),
      CheckStream(new QCheckBox(u"新班的科类或类别代码不同时，学生改为新班的(&K)"_s, parent))
{
    for (const auto& [box, name] :
         {std::pair{CheckScores, u"CheckScores"_s}, std::pair{CheckStream, u"CheckStream"_s}}) {
        named(box, name, widgets::withoutAccessKey(box->text()));
        layout->addWidget(box);
    }
    CheckScores->setToolTip(u"不选时，以前的考试仍按当时的班级统计。"_s);
    CheckScores->setEnabled(earlierScores > 0);
    CheckStream->setChecked(true);
}

void MoveTicks::take(StudentMove& move) const
{
    if (CheckScores->isChecked())
        move.scores = EarlierScores::GoAlong;
    if (!CheckStream->isChecked())
        move.stream = StreamAfter::Kept;
}

MoveBox::MoveBox(const RosterStudent& student, qsizetype earlierScores, const QStringList& classes,
                 std::function<double(double)> freeNumber, QWidget* parent)
    : QDialog(parent), m_student(student), m_freeNumber(std::move(freeNumber))
{
    setObjectName(u"MoveBox"_s);
    setWindowTitle(u"移到"_s);
    makeWidgets(classes, earlierScores);
    connect(ComboClass, &QComboBox::editTextChanged, this, &MoveBox::offerNumber);
    ComboClass->setFocus();
}

void MoveBox::makeWidgets(const QStringList& classes, qsizetype earlierScores)
{
    auto* layout = new QVBoxLayout(this);
    auto* LabelWho = widgets::namedText(new QLabel(this), u"LabelWho"_s);
    LabelWho->setText(m_student.text() + u"移到："_s);
    layout->addWidget(LabelWho);
    ComboClass = named(new QComboBox(this), u"ComboClass"_s, u"新班级"_s);
    ComboClass->setEditable(true);
    ComboClass->setInsertPolicy(QComboBox::NoInsert);
    ComboClass->addItems(classes);
    ComboClass->setCurrentIndex(-1);
    TextNumber = named(new QLineEdit(this), u"TextNumber"_s, u"新学号"_s);
    TextNumber->setToolTip(u"先填班里最后一名后面的学号，可以改。"_s);
    auto* place = new QHBoxLayout;
    place->addWidget(label(u"LabelClass"_s, u"班级(&B)"_s, ComboClass, this));
    place->addWidget(ComboClass, 1);
    place->addWidget(label(u"LabelNumber"_s, u"学号(&N)"_s, TextNumber, this));
    place->addWidget(TextNumber, 1);
    layout->addLayout(place);
    m_ticks = std::make_unique<MoveTicks>(earlierScores, layout, this);
    addBoxButtons(this, layout);
}

void MoveBox::offerNumber()
{
    const std::optional<double> classNumber = typedWholeNumber(ComboClass->currentText());
    TextNumber->setText(classNumber ? runtime::doubleText(m_freeNumber(*classNumber)) : QString());
}

StudentMove MoveBox::move() const
{
    StudentMove wanted{.id = m_student.id};
    wanted.to = {typedWholeNumber(ComboClass->currentText()).value_or(0),
                 typedWholeNumber(TextNumber->text()).value_or(0)};
    m_ticks->take(wanted);
    return wanted;
}

void MoveBox::accept()
{
    if (gather(move()))
        QDialog::accept();
}

} // namespace maintenance
