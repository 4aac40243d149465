#include "maintenance/ui/FormJiaoShiMingDan.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "maintenance/ui/FormZMD.h"
#include "platform/grid/ui/CellListEditor.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/grid/ui/GridEditor.h"
#include "platform/widgets/Unsaved.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::CommandScope;
using widgets::named;

namespace {

constexpr int listHeight = 1200;

} // namespace

FormJiaoShiMingDan::FormJiaoShiMingDan(library::ScoreLibrary& scoreLibrary,
                                       widgets::ScreenDialogs& dialogs, QWidget* parent)
    : Screen(u"FormJiaoShiMingDan"_s, u"设置教师名单"_s, parent),
      m_library(scoreLibrary),
      m_dialogs(dialogs),
      m_list(scoreLibrary),
      m_pick(scoreLibrary.paths(), scoreLibrary.catalogue)
{
    makeWidgets();
    Form_Load();
    connectWidgets();
    Combo1_Click();
}

void FormJiaoShiMingDan::makeWidgets()
{
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(makeHead());
    makeGrid();
    List2 = named(new QListWidget(this), u"List2"_s, u"载入哪次考试的名单"_s);
    List2->hide();
    auto* lists = new QHBoxLayout;
    lists->addWidget(MSFlexGrid1, 3);
    lists->addWidget(List2, 1);
    layout->addLayout(lists, 1);
    layout->addLayout(makeButtons());
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().lineSpacing() * 30);
}

QHBoxLayout* FormJiaoShiMingDan::makeHead()
{
    Combo1 = named(new QComboBox(this), u"Combo1"_s, u"考试"_s);
    Command4 = button(u"Command4"_s, u"载入名单(&L)"_s, this);
    auto* head = new QHBoxLayout;
    head->addWidget(Combo1);
    head->addWidget(widgets::label(u"Label1"_s, u"的教师名单"_s, Combo1, this));
    head->addStretch();
    head->addWidget(Command4);
    return head;
}

void FormJiaoShiMingDan::makeGrid()
{
    MSFlexGrid1 =
        named(new grid::FlexGridView(m_list.teachers, this), u"MSFlexGrid1"_s, u"教师名单"_s);
    Text1 = named(new grid::CellTextEditor(MSFlexGrid1), u"Text1"_s, u"教师"_s);
    List1 = named(new grid::CellListEditor(grid::CellListEditor::Choice::Several, MSFlexGrid1),
                  u"List1"_s, u"可选的教师"_s);
    m_editor =
        new grid::GridEditor(MSFlexGrid1, Text1, List1,
                             {.editing = [](int, int) { return grid::CellEditing::TextAndList; },
                              .entries = [this](int, int column) { return ShowJiaoShi(column); },
                              .listHeight = listHeight,
                              .afterEnter = grid::AfterEnter::Close});
}

QHBoxLayout* FormJiaoShiMingDan::makeButtons()
{
    Command1 = button(u"Command1"_s, u"修改总名单(&M)"_s, this);
    Command3 = button(u"Command3"_s, u"保存(&S)"_s, this);
    Command2 = button(u"Command2"_s, u"退出(&X)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Command1);
    buttons->addStretch();
    buttons->addWidget(Command3);
    buttons->addWidget(Command2);
    return buttons;
}

void FormJiaoShiMingDan::connectWidgets()
{
    connect(Combo1, &QComboBox::currentIndexChanged, this, &FormJiaoShiMingDan::Combo1_Click);
    connect(List2, &QListWidget::itemClicked, this, &FormJiaoShiMingDan::List2_Click);
    connect(Command1, &QPushButton::clicked, this, &FormJiaoShiMingDan::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
    connect(Command3, &QPushButton::clicked, this, &FormJiaoShiMingDan::Command3_Click);
    connect(Command4, &QPushButton::clicked, this, &FormJiaoShiMingDan::Command4_Click);
    List1->installEventFilter(this);
    List2->installEventFilter(this);
}

void FormJiaoShiMingDan::Form_Load()
{
    const CommandScope command(m_dialogs);
    m_pick.load();
    m_list.load();
    Combo1->addItems(m_library.catalogue.ExamList);
    List2->addItems(m_library.catalogue.ExamList);
}

void FormJiaoShiMingDan::Combo1_Click()
{
    const CommandScope command(m_dialogs);
    m_editor->HideTS();
    if (settleUnsaved()) {
        m_list.show(Combo1->currentText());
        MSFlexGrid1->refresh();
    } else {
        const QSignalBlocker blocker(Combo1);
        Combo1->setCurrentText(m_list.exam());
    }
}

/// False if the user stays with changes that are not saved.
bool FormJiaoShiMingDan::settleUnsaved()
{
    return !m_list.hasUnsaved()
           || widgets::settleUnsaved(u"“%1”的教师名单有改动，还没有保存。"_s.arg(m_list.exam()),
                                     [this] { return m_list.save(); });
}

std::optional<QStringList> FormJiaoShiMingDan::ShowJiaoShi(int column) const
{
    return m_pick.names(column);
}

void FormJiaoShiMingDan::Command4_Click()
{
    m_editor->HideTS();
    List2->show();
    List2->setFocus();
}

void FormJiaoShiMingDan::hideExams()
{
    List2->hide();
    Command4->setFocus();
}

void FormJiaoShiMingDan::List2_Click()
{
    const CommandScope command(m_dialogs);
    if (List2->currentItem() == nullptr)
        return;
    const runtime::Choice question{.text = u"载入的名单会替换表里没有保存的改动。"_s,
                                   .buttons = {u"载入"_s, u"取消"_s},
                                   .safe = 1,
                                   .title = u"提示"_s};
    if (!m_list.wasEdited() || runtime::choose(question) == 0)
        m_list.copyFrom(List2->currentItem()->text());
    MSFlexGrid1->refresh();
    hideExams();
}

void FormJiaoShiMingDan::Command3_Click()
{
    const CommandScope command(m_dialogs);
    m_editor->HideTS();
    if (m_list.save())
        close();
}

void FormJiaoShiMingDan::Command1_Click()
{
    m_editor->HideTS();
    FormZMD screen(m_library.paths(), m_dialogs, this);
    screen.setWindowModality(Qt::WindowModal);
    screen.exec();
}

/// Esc takes both lists out of sight and leaves the grid as it is; Enter loads the list of the
/// exam it stands on.
bool FormJiaoShiMingDan::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return Screen::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (watched == List1 && key == Qt::Key_Escape)
        m_editor->HideTS();
    else if (watched == List2 && key == Qt::Key_Escape)
        hideExams();
    else if (watched == List2 && isEnter)
        List2_Click();
    else
        return Screen::eventFilter(watched, event);
    return true;
}

bool FormJiaoShiMingDan::mayLeave()
{
    const CommandScope command(m_dialogs);
    m_editor->HideTS();
    return settleUnsaved();
}

} // namespace maintenance
