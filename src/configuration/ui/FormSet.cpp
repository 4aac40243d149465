#include "configuration/ui/FormSet.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>

#include <array>

#include "configuration/ui/FormXiangXiSZ.h"
#include "platform/grid/ui/CellListEditor.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/grid/ui/GridEditor.h"
#include "platform/widgets/MixedColor.h"
#include "platform/widgets/Unsaved.h"

namespace configuration {

using namespace Qt::StringLiterals;
using grid::CellEditing;
using widgets::button;
using widgets::CommandScope;
using widgets::named;

namespace {

/// The share of the text colour in the red of a complaint.
constexpr double textInWarning = 0.25;

} // namespace

FormSet::FormSet(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                 QWidget* parent)
    : Screen(u"FormSet"_s, u"分析设置"_s, parent), m_settings(scoreLibrary), m_dialogs(dialogs)
{
    build();
    makeEditor();
    connectEditor();
    Form_Load();
}

void FormSet::build()
{
    MSFlexGrid1 =
        named(new grid::FlexGridView(m_settings.settings, this), u"MSFlexGrid1"_s, u"分析设置"_s);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MSFlexGrid1, 1);
    layout->addWidget(makeStrip());
    resize(fontMetrics().averageCharWidth() * 150, fontMetrics().height() * 40);
}

QWidget* FormSet::makeStrip()
{
    auto* strip = new QWidget(this);
    auto* Command1 = button(u"Command1"_s, u"确定(&O)"_s, strip);
    // Without a handler on purpose: the screen is left by its close box.
    auto* Command2 = button(u"Command2"_s, u"取消(&C)"_s, strip);
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(Command1);
    layout->addWidget(Command2);
    connect(Command1, &QPushButton::clicked, this, &FormSet::Command1_Click);
    return strip;
}

void FormSet::makeEditor()
{
    Text1 = named(new grid::CellTextEditor(MSFlexGrid1), u"Text1"_s, u"设置"_s);
    List1 = named(new grid::CellListEditor(grid::CellListEditor::Choice::Several, MSFlexGrid1),
                  u"List1"_s, u"可选的设置"_s);
    const auto editing = [this](int row, int col) {
        if (col != AnalysisSettings::ValueCol)
            return CellEditing::None;
        return m_settings.isListEdited(row) ? CellEditing::List : CellEditing::Text;
    };
    m_editor = new grid::GridEditor(
        MSFlexGrid1, Text1, List1,
        {.editing = editing,
         .entries = [this](int row, int) { return std::optional(m_settings.choices(row)); },
         .listHeight = 600});
}

void FormSet::connectEditor()
{
    connect(m_editor, &grid::GridEditor::activated, this, &FormSet::MSFlexGrid1_MouseUp);
    connect(m_editor, &grid::GridEditor::opened, this, &FormSet::cellOpened);
    connect(m_editor, &grid::GridEditor::edited, this, &FormSet::cellEdited);
    connect(m_editor, &grid::GridEditor::takenBack, this, &FormSet::cellTakenBack);
    connect(MSFlexGrid1, &grid::FlexGridView::rowColChanged, m_editor, &grid::GridEditor::HideTS);
}

void FormSet::Form_Load()
{
    const CommandScope command(m_dialogs);
    m_settings.load();
    Form_Resize();
}

void FormSet::showSetting(const QString& name)
{
    const int row = m_settings.rowOf(name);
    if (row < 0)
        return;
    MSFlexGrid1->select(row, AnalysisSettings::ValueCol, row, AnalysisSettings::ValueCol);
    MSFlexGrid1->setFocus();
}

void FormSet::resizeEvent(QResizeEvent* event)
{
    Screen::resizeEvent(event);
    Form_Resize();
}

void FormSet::showEvent(QShowEvent* event)
{
    // Not before now does the grid know its size.
    Form_Resize();
    Screen::showEvent(event);
}

void FormSet::Form_Resize()
{
    MSFlexGrid1->shareWidth(std::array{1, 1, 1, 1});
}

void FormSet::MSFlexGrid1_MouseUp(int row, int col)
{
    if (col == AnalysisSettings::AnalysisCol && m_settings.flip(row))
        MSFlexGrid1->refreshCell(row, col);
    else if (col == AnalysisSettings::ConditionsCol && m_settings.offersConditions(row))
        SzGekE(row);
}

bool FormSet::isTyped(int row, int col) const
{
    return col == AnalysisSettings::ValueCol && !m_settings.isListEdited(row);
}

void FormSet::cellOpened(int row, int col)
{
    if (!isTyped(row, col))
        return;
    m_settings.noteFlag(row);
    showComplaint(m_settings.complaint(row));
}

void FormSet::cellEdited(int row, int col)
{
    if (!isTyped(row, col))
        return;
    m_settings.clearFlag(row);
    const QString complaint = m_settings.complaint(row);
    showComplaint(complaint);
    QToolTip::showText(Text1->mapToGlobal(QPoint(0, Text1->height())), complaint, Text1);
}

void FormSet::cellTakenBack(int row, int col)
{
    if (isTyped(row, col))
        m_settings.restoreFlag(row);
}

/// The value is stored all the same.
void FormSet::showComplaint(const QString& complaint)
{
    const QColor color =
        widgets::mixedColor(Qt::red, Text1->palette().color(QPalette::Text), textInWarning);
    Text1->setStyleSheet(complaint.isEmpty() ? QString()
                                             : u"border: 2px solid %1"_s.arg(color.name()));
    Text1->setToolTip(complaint);
    Text1->setAccessibleDescription(complaint);
}

SubjectConditions FormSet::conditionsOf(int row)
{
    const CommandScope command(m_dialogs);
    return m_settings.SzGekE(row);
}

void FormSet::SzGekE(int row)
{
    SubjectConditions conditions = conditionsOf(row);
    FormXiangXiSZ screen(conditions, m_settings, m_dialogs, this);
    screen.setWindowTitle(SubjectConditions::captionOf(
        m_settings.settings.TextMatrix(row, AnalysisSettings::NameCol)));
    screen.setWindowModality(Qt::WindowModal);
    screen.exec();
    MSFlexGrid1->refresh();
}

void FormSet::Command1_Click()
{
    const CommandScope command(m_dialogs);
    if (save())
        close();
}

bool FormSet::save()
{
    m_editor->HideTS();
    return m_settings.save();
}

bool FormSet::mayLeave()
{
    const CommandScope command(m_dialogs);
    return !m_settings.isChanged()
           || widgets::settleUnsaved(u"分析设置有改动，还没有保存。"_s, [this] { return save(); });
}

} // namespace configuration
