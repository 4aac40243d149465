#include "configuration/ui/FormXiangXiSZ.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/grid/ui/CellListEditor.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/grid/ui/GridEditor.h"
#include "platform/widgets/Unsaved.h"

namespace configuration {

using namespace Qt::StringLiterals;
using grid::CellEditing;
using widgets::button;
using widgets::CommandScope;
using widgets::named;

FormXiangXiSZ::FormXiangXiSZ(SubjectConditions& conditions, AnalysisSettings& settings,
                             widgets::ScreenDialogs& dialogs, QWidget* parent)
    : Screen(u"FormXiangXiSZ"_s, u"分析设置"_s, parent),
      m_conditions(conditions),
      m_settings(settings),
      m_dialogs(dialogs)
{
    build();
    makeEditor();
}

void FormXiangXiSZ::build()
{
    MSFlexGrid1 = named(new grid::FlexGridView(m_conditions.conditions, this), u"MSFlexGrid1"_s,
                        u"各科条件"_s);
    LabelNote = widgets::namedText(new QLabel(this), u"LabelNote"_s);
    LabelNote->setWordWrap(true);
    LabelNote->hide();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MSFlexGrid1, 1);
    layout->addWidget(LabelNote);
    layout->addWidget(makeStrip());
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 32);
}

QWidget* FormXiangXiSZ::makeStrip()
{
    auto* strip = new QWidget(this);
    auto* Command3 = button(u"Command3"_s, u"删除(&D)"_s, strip);
    auto* Command1 = button(u"Command1"_s, u"确定(&O)"_s, strip);
    // Without a handler on purpose: the screen is left by its close box.
    auto* Command2 = button(u"Command2"_s, u"取消(&C)"_s, strip);
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Command3);
    layout->addStretch();
    layout->addWidget(Command1);
    layout->addWidget(Command2);
    connect(Command1, &QPushButton::clicked, this, &FormXiangXiSZ::Command1_Click);
    connect(Command3, &QPushButton::clicked, this, &FormXiangXiSZ::Command3_Click);
    return strip;
}

void FormXiangXiSZ::makeEditor()
{
    auto* Text1 = named(new grid::CellTextEditor(MSFlexGrid1), u"Text1"_s, u"分数"_s);
    auto* List1 = named(new grid::CellListEditor(grid::CellListEditor::Choice::One, MSFlexGrid1),
                        u"List1"_s, u"条件"_s);
    List1->setEntries(SubjectConditions::operators());
    const auto editing = [](int, int col) {
        if (SubjectConditions::isOperator(col))
            return CellEditing::List;
        return SubjectConditions::isScore(col) ? CellEditing::Text : CellEditing::None;
    };
    m_editor = new grid::GridEditor(
        MSFlexGrid1, Text1, List1,
        {.editing = editing, .entries = [](int, int) { return std::nullopt; }, .listHeight = 300});
}

void FormXiangXiSZ::resizeEvent(QResizeEvent* event)
{
    Screen::resizeEvent(event);
    Form_Resize();
}

void FormXiangXiSZ::showEvent(QShowEvent* event)
{
    // Not before now does the grid know its size.
    Form_Resize();
    Screen::showEvent(event);
}

void FormXiangXiSZ::Form_Resize()
{
    MSFlexGrid1->shareWidth(std::vector(m_conditions.conditions.Cols(), 1));
}

QString FormXiangXiSZ::settingName() const
{
    return SubjectConditions::nameIn(windowTitle());
}

void FormXiangXiSZ::Command1_Click()
{
    const CommandScope command(m_dialogs);
    if (save())
        close();
}

bool FormXiangXiSZ::save()
{
    m_editor->HideTS();
    return m_conditions.save(settingName(), m_settings);
}

void FormXiangXiSZ::Command3_Click()
{
    const CommandScope command(m_dialogs);
    m_editor->HideTS();
    if (!m_conditions.remove(settingName()))
        return;
    LabelNote->setText(
        u"各科条件已经从成绩库里删除。分析设置里写着“(使用自定义数据)”的，请改回区间，"
        "否则统计时没有条件可用；按“确定”可以把表里的条件存回去。"_s);
    LabelNote->show();
}

bool FormXiangXiSZ::mayLeave()
{
    const CommandScope command(m_dialogs);
    return !m_conditions.isChanged()
           || widgets::settleUnsaved(u"各科条件有改动，还没有保存。"_s, [this] { return save(); });
}

} // namespace configuration
