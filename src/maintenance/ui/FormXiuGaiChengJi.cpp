#include "maintenance/ui/FormXiuGaiChengJi.h"

#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "platform/widgets/ScreenProgress.h"
#include "platform/widgets/Unsaved.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::CommandScope;
using widgets::label;
using widgets::named;

namespace {

bool isEnter(const QEvent* event)
{
    const auto* key = static_cast<const QKeyEvent*>(event);
    return (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && !key->isAutoRepeat();
}

} // namespace

FormXiuGaiChengJi::FormXiuGaiChengJi(library::ScoreLibrary& scoreLibrary,
                                     widgets::ScreenDialogs& dialogs, QWidget* parent)
    : Screen(u"FormXiuGaiChengJi"_s, u"修改成绩"_s, parent),
      m_library(scoreLibrary),
      m_correction(scoreLibrary),
      m_dialogs(dialogs)
{
    makeWidgets();
    layOut();
    Form_Load();
    connectWidgets();
}

void FormXiuGaiChengJi::makeWidgets()
{
    ComboKS = named(new QComboBox(this), u"ComboKS"_s, u"考试"_s);
    TextBJ = named(new QLineEdit(this), u"TextBJ"_s, u"班级"_s);
    TextXH = named(new QLineEdit(this), u"TextXH"_s, u"学号"_s);
    TextXM = named(new QLineEdit(this), u"TextXM"_s, u"姓名"_s);
    TextXM->setReadOnly(true);
    TextXM->setFocusPolicy(Qt::ClickFocus);
    ComboKM = named(new QComboBox(this), u"ComboKM"_s, u"科目"_s);
    TextCJ = named(new QLineEdit(this), u"TextCJ"_s, u"成绩"_s);
}

void FormXiuGaiChengJi::layOut()
{
    auto* layout = new QGridLayout(this);
    int row = 0;
    for (const auto& [caption, field] :
         std::initializer_list<std::pair<QString, QWidget*>>{{u"考试(&K)"_s, ComboKS},
                                                             {u"班级(&B)"_s, TextBJ},
                                                             {u"学号(&H)"_s, TextXH},
                                                             {u"姓名"_s, TextXM},
                                                             {u"科目(&M)"_s, ComboKM},
                                                             {u"成绩(&C)"_s, TextCJ}}) {
        layout->addWidget(label(u"Label"_s + field->objectName(), caption, field, this), row, 0);
        layout->addWidget(field, row++, 1);
    }
    layout->addWidget(label(u"Label2"_s, u"输入成绩后,回车确认"_s, nullptr, this), row++, 1);
    layout->addWidget(button(u"Command1"_s, u"修改完毕(&O)"_s, this), row, 1, Qt::AlignRight);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(row + 1, 1);
}

void FormXiuGaiChengJi::Form_Load()
{
    ComboKM->addItems(m_library.catalogue.SubjectColumns);
    ComboKS->addItems(m_library.catalogue.ExamList);
}

void FormXiuGaiChengJi::connectWidgets()
{
    for (QLineEdit* box : {TextBJ, TextXH})
        connect(box, &QLineEdit::textChanged, this, &FormXiuGaiChengJi::ShowCJ);
    for (QComboBox* box : {ComboKS, ComboKM})
        connect(box, &QComboBox::activated, this, &FormXiuGaiChengJi::ShowCJ);
    for (QWidget* field : std::initializer_list<QWidget*>{ComboKS, TextBJ, TextXH, ComboKM, TextCJ})
        field->installEventFilter(this);
    connect(findChild<QPushButton*>(u"Command1"_s), &QPushButton::clicked, this,
            &FormXiuGaiChengJi::Command1_Click);
}

ScoreCorrection::Place FormXiuGaiChengJi::place() const
{
    return {ComboKS->currentText(), TextBJ->text(), TextXH->text(), ComboKM->currentText()};
}

void FormXiuGaiChengJi::ShowCJ()
{
    const CommandScope command(m_dialogs);
    const std::optional<ScoreCorrection::Shown> shown = m_correction.ShowCJ(place());
    if (!shown)
        return;
    TextXM->setText(shown->name);
    TextCJ->setText(shown->score);
}

void FormXiuGaiChengJi::SelTxt(QLineEdit* box)
{
    box->setFocus();
    box->selectAll();
}

bool FormXiuGaiChengJi::eventFilter(QObject* watched, QEvent* event)
{
    // The Enter that closes a message is let go over a field that it was not meant for.
    if (event->type() == QEvent::KeyPress)
        m_pressed = isEnter(event) ? watched : nullptr;
    else if (event->type() == QEvent::KeyRelease && isEnter(event)
             && std::exchange(m_pressed, nullptr) == watched)
        KeyUp(watched);
    return Screen::eventFilter(watched, event);
}

void FormXiuGaiChengJi::KeyUp(const QObject* field)
{
    if (field == ComboKS)
        SelTxt(TextBJ);
    else if (field == TextBJ)
        SelTxt(TextXH);
    else if (field == TextXH)
        ComboKM->setFocus();
    else if (field == ComboKM)
        SelTxt(TextCJ);
    else
        TextCJ_KeyUp();
}

void FormXiuGaiChengJi::TextCJ_KeyUp()
{
    const CommandScope command(m_dialogs);
    const ScoreCorrection::Result result = save();
    SelTxt(result == ScoreCorrection::Result::Refused ? TextCJ : TextBJ);
}

ScoreCorrection::Result FormXiuGaiChengJi::save()
{
    const ScoreCorrection::Result result = m_correction.save(place(), TextCJ->text());
    if (result == ScoreCorrection::Result::Stored)
        TextCJ->setModified(false);
    return result;
}

bool FormXiuGaiChengJi::mayLeave()
{
    if (!TextCJ->isModified() || TextXM->text().isEmpty())
        return true;
    if (!widgets::settleUnsaved(u"输入的成绩还没有按回车保存。"_s,
                                [this] { return save() == ScoreCorrection::Result::Stored; }))
        return false;
    TextCJ->setModified(false);
    return true;
}

void FormXiuGaiChengJi::Command1_Click()
{
    const CommandScope command(m_dialogs);
    if (!mayLeave())
        return;
    widgets::ScreenProgress progress(this);
    if (m_correction.finish(ComboKS->currentText(), progress))
        close();
}

} // namespace maintenance
