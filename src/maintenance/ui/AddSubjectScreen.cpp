#include "maintenance/ui/AddSubjectScreen.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "library/ColumnNames.h"
#include "library/ui/BackupBox.h"
#include "maintenance/QuotedText.h"
#include "platform/runtime/Dialogs.h"
#include "platform/widgets/CaptionedList.h"
#include "platform/widgets/ScreenProgress.h"
#include "platform/widgets/Unsaved.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using widgets::CommandScope;
using widgets::label;
using widgets::named;

AddSubjectScreen::AddSubjectScreen(library::ScoreLibrary& scoreLibrary,
                                   widgets::ScreenDialogs& dialogs, QWidget* parent)
    : DialogScreen(u"AddSubjectScreen"_s, u"添加科目"_s, parent),
      m_library(scoreLibrary),
      m_addition(scoreLibrary),
      m_dialogs(dialogs)
{
    makeWidgets();
    listSubjects();
    takeName({});
}

void AddSubjectScreen::makeWidgets()
{
    m_name = named(new QLineEdit(this), u"TextName"_s, u"科目名称"_s);
    m_formula = named(new QLineEdit(this), u"TextFormula"_s, u"总分公式"_s);
    auto* layout = new QGridLayout(this);
    layout->addWidget(label(u"LabelName"_s, u"科目名称(&N)"_s, m_name, this), 0, 0);
    layout->addWidget(m_name, 0, 1);
    auto* hint =
        label(u"LabelHint"_s,
              u"名称以“总分”结尾的是总分，由公式计算：在下面选中科目，或者直接输入公式。"_s,
              nullptr, this);
    hint->setWordWrap(true);
    layout->addWidget(hint, 1, 0, 1, 2);
    layout->addWidget(label(u"LabelFormula"_s, u"总分公式(&G)"_s, m_formula, this), 2, 0);
    layout->addWidget(m_formula, 2, 1);
    m_subjects = widgets::addMultiList(layout, {.row = 3, .columns = 2}, u"ListSubjects"_s,
                                       u"现有科目(&M)"_s);
    layout->addLayout(makeButtons(), 6, 0, 1, 2);
    resize(fontMetrics().averageCharWidth() * 80, fontMetrics().lineSpacing() * 22);
    connect(m_name, &QLineEdit::textChanged, this, &AddSubjectScreen::takeName);
    connect(m_subjects, &QListWidget::itemSelectionChanged, this, &AddSubjectScreen::takeSubjects);
}

QHBoxLayout* AddSubjectScreen::makeButtons()
{
    m_backup = new library::BackupBox(u"添加前备份成绩库(&B)"_s, this);
    QPushButton* adding = widgets::defaultButton(u"ButtonAdd"_s, u"添加(&A)"_s, this);
    QPushButton* closing = widgets::enterButton(u"ButtonClose"_s, u"关闭(&C)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_backup, 1);
    buttons->addWidget(adding);
    buttons->addWidget(closing);
    connect(adding, &QPushButton::clicked, this, &AddSubjectScreen::add);
    connect(closing, &QPushButton::clicked, this, &QDialog::close);
    return buttons;
}

void AddSubjectScreen::listSubjects()
{
    m_subjects->clear();
    m_subjects->addItems(m_library.catalogue.SubjectColumns);
}

/// A total that the library has a formula for gets it.
void AddSubjectScreen::takeName(const QString& typed)
{
    const QString name = typed.trimmed();
    const bool isTotal = library::isTotal(name);
    m_formula->setEnabled(isTotal);
    m_subjects->setEnabled(isTotal);
    const CommandScope command(m_dialogs);
    m_formula->setText(isTotal ? m_addition.knownFormula(name) : QString());
}

void AddSubjectScreen::takeSubjects()
{
    m_formula->setText(widgets::selectedTexts(m_subjects).join(u'+'));
}

bool AddSubjectScreen::add()
{
    const CommandScope command(m_dialogs);
    widgets::ScreenProgress progress(this);
    const NewSubject subject{.name = m_name->text().trimmed(), .formula = m_formula->text()};
    if (!m_addition.run(subject, progress, m_backup->backup())) {
        m_name->setFocus();
        return false;
    }
    listSubjects();
    m_name->clear();
    m_name->setFocus();
    m_wantsTotals = runtime::choose({.text = SubjectAddition::nextSteps(subject),
                                     .buttons = {u"打开总分设置"_s, u"以后再说"_s},
                                     .safe = 1,
                                     .title = u"添加科目"_s})
                    == 0;
    if (m_wantsTotals)
        close();
    return true;
}

bool AddSubjectScreen::mayLeave()
{
    const QString name = m_name->text().trimmed();
    return name.isEmpty()
           || widgets::settleUnsaved(u"科目“%1”还没有添加。"_s.arg(shownName(name)),
                                     [this] { return add(); });
}

} // namespace maintenance
