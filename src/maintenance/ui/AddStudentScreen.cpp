#include "maintenance/ui/AddStudentScreen.h"

#include <algorithm>

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>

#include "platform/runtime/Numbers.h"
#include "platform/widgets/CaptionedList.h"
#include "platform/widgets/Unsaved.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using widgets::CommandScope;
using widgets::label;
using widgets::named;

AddStudentScreen::AddStudentScreen(library::ScoreLibrary& scoreLibrary,
                                   widgets::ScreenDialogs& dialogs, QWidget* parent)
    : DialogScreen(u"AddStudentScreen"_s, u"添加学生"_s, parent),
      m_addition(scoreLibrary),
      m_dialogs(dialogs)
{
    const CommandScope command(m_dialogs);
    makeWidgets();
    m_streams->addItems(m_addition.streams());
    listClasses();
    connectWidgets();
    showClass();
    m_name->setFocus();
}

void AddStudentScreen::makeWidgets()
{
    auto* layout = new QGridLayout(this);
    layout->addWidget(makeFields(), 0, 0, 3, 1);
    m_students =
        widgets::addList(layout, {.row = 0, .column = 1}, u"ListStudents"_s, u"本班学生(&L)"_s);
    layout->addLayout(makeButtons(), 3, 0, 1, 2);
    layout->setColumnStretch(0, 3);
    layout->setColumnStretch(1, 2);
    layout->setRowStretch(1, 1);
    resize(fontMetrics().averageCharWidth() * 100, fontMetrics().lineSpacing() * 30);
}

QWidget* AddStudentScreen::makeFields()
{
    auto* fields = new QWidget(this);
    m_classes = named(new QComboBox(fields), u"ComboClass"_s, u"班级"_s);
    m_classes->setEditable(true);
    m_classes->setInsertPolicy(QComboBox::NoInsert);
    m_streams = named(new QComboBox(fields), u"ComboStream"_s, u"科类"_s);
    m_category = named(new QLineEdit(fields), u"TextCategory"_s, u"类别代码"_s);
    m_classNote = widgets::namedText(new QLabel(fields), u"LabelClassNote"_s);
    m_classNote->setWordWrap(true);
    m_number = named(new QLineEdit(fields), u"TextNumber"_s, u"学号"_s);
    m_name = named(new QLineEdit(fields), u"TextName"_s, u"姓名"_s);
    auto* form = new QFormLayout(fields);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(label(u"LabelClass"_s, u"班级(&B)"_s, m_classes, fields), m_classes);
    form->addRow(label(u"LabelStream"_s, u"科类(&K)"_s, m_streams, fields), m_streams);
    form->addRow(label(u"LabelCategory"_s, u"类别代码(&D)"_s, m_category, fields), m_category);
    form->addRow(m_classNote);
    form->addRow(label(u"LabelNumber"_s, u"学号(&H)"_s, m_number, fields), m_number);
    form->addRow(label(u"LabelName"_s, u"姓名(&N)"_s, m_name, fields), m_name);
    form->addRow(makeDetails());
    return fields;
}

/// A library can have further columns, and lack some; each has a line of its own.
QWidget* AddStudentScreen::makeDetails()
{
    auto* lines = new QWidget;
    auto* form = new QFormLayout(lines);
    for (const QString& column : m_addition.details()) {
        auto* text = named(new QLineEdit(lines), u"Text"_s + column, column);
        form->addRow(label(u"Label"_s + column, widgets::literalCaption(column), text, lines),
                     text);
        m_details.emplace_back(column, text);
    }
    auto* area = named(new QScrollArea(this), u"AreaDetails"_s, u"其他信息"_s);
    area->setWidget(lines);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    return area;
}

QHBoxLayout* AddStudentScreen::makeButtons()
{
    m_result = widgets::namedText(new QLabel(this), u"LabelResult"_s);
    QPushButton* saving = widgets::defaultButton(u"ButtonSave"_s, u"保存(&S)"_s, this);
    QPushButton* another = widgets::enterButton(u"ButtonSaveNext"_s, u"保存并再添一个(&A)"_s, this);
    QPushButton* closing = widgets::enterButton(u"ButtonClose"_s, u"关闭(&C)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_result, 1);
    buttons->addWidget(saving);
    buttons->addWidget(another);
    buttons->addWidget(closing);
    connect(saving, &QPushButton::clicked, this, [this] { save(Afterwards::Close); });
    connect(another, &QPushButton::clicked, this, [this] { save(Afterwards::AddAnother); });
    connect(closing, &QPushButton::clicked, this, &QDialog::close);
    return buttons;
}

void AddStudentScreen::connectWidgets()
{
    connect(m_classes, &QComboBox::currentTextChanged, this, &AddStudentScreen::showClass);
}

void AddStudentScreen::listClasses()
{
    const QSignalBlocker listing(m_classes);
    const QString chosen = m_classes->currentText();
    m_classes->clear();
    for (const double number : m_addition.classes())
        m_classes->addItem(runtime::doubleText(number));
    if (!chosen.isEmpty())
        m_classes->setCurrentText(chosen);
}

void AddStudentScreen::showClass()
{
    const CommandScope command(m_dialogs);
    m_result->clear();
    if (const std::optional<ClassRoster> roster = m_addition.roster(m_classes->currentText()))
        showRoster(*roster);
}

/// A class that has students gives their stream; a new one waits for a choice.
void AddStudentScreen::showRoster(const ClassRoster& roster)
{
    m_students->clear();
    for (const ClassRoster::Student& student : roster.students) {
        auto* item = new QListWidgetItem(
            u"%1 号 %2"_s.arg(runtime::doubleText(student.number), student.name), m_students);
        item->setData(Qt::UserRole, student.id);
    }
    m_streams->setEnabled(roster.isNew());
    m_category->setEnabled(roster.isNew());
    m_category->setText(roster.category.text());
    if (roster.isNew()) {
        m_streams->setCurrentIndex(-1);
        m_classNote->setText(u"成绩库里还没有这个班的学生，请选择它的科类，可以填类别代码。"_s);
    } else {
        m_streams->setCurrentIndex(m_streams->findText(roster.stream));
        m_classNote->setText(
            u"科类（%1）和类别代码（%2）与本班相同。"_s.arg(roster.stream, roster.category.text()));
    }
    if (m_number->text() == m_offered) {
        m_offered = runtime::doubleText(roster.freeNumber);
        m_number->setText(m_offered);
    }
}

void AddStudentScreen::selectStudent(qint64 id)
{
    for (int i = 0; i < m_students->count(); ++i) {
        if (m_students->item(i)->data(Qt::UserRole).toLongLong() == id)
            m_students->setCurrentRow(i);
    }
}

bool AddStudentScreen::isTyped() const
{
    return !m_name->text().isEmpty() || std::ranges::any_of(m_details, [](const auto& detail) {
        return !detail.second->text().isEmpty();
    });
}

NewStudent AddStudentScreen::typed() const
{
    NewStudent student{
        m_classes->currentText(), m_number->text(), m_name->text(), m_streams->currentText(), {}};
    for (const auto& [column, text] : m_details)
        student.details.emplace_back(column, text->text());
    student.category = m_category->text();
    return student;
}

bool AddStudentScreen::add()
{
    const CommandScope command(m_dialogs);
    const NewStudent student = typed();
    const std::optional<qint64> id = m_addition.add(student);
    if (!id)
        return false;
    clearStudent();
    listClasses();
    showClass();
    selectStudent(*id);
    m_result->setText(u"已添加：%1 班 %2 号 %3"_s.arg(
        student.classNumber.trimmed(), student.number.trimmed(), student.name.trimmed()));
    return true;
}

void AddStudentScreen::save(Afterwards afterwards)
{
    const bool isAdded = add();
    if (isAdded && afterwards == Afterwards::Close)
        close();
    else
        m_name->setFocus();
}

void AddStudentScreen::clearStudent()
{
    m_name->clear();
    for (const auto& [column, text] : m_details)
        text->clear();
    m_number->setText(m_offered);
}

bool AddStudentScreen::mayLeave()
{
    return !isTyped()
           || widgets::settleUnsaved(u"这名学生还没有保存。"_s, [this] { return add(); });
}

} // namespace maintenance
