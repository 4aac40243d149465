#include "import/ui/FormShuRuMF.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/ColumnEditor.h"
#include "platform/grid/ui/FlexGridView.h"

namespace importing {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::named;

namespace {

constexpr int CurCol = 1;

} // namespace

FormShuRuMF::FormShuRuMF(ImportState& state, const runtime::AppPaths& paths, const QString& label,
                         QWidget* parent)
    : Screen(u"FormShuRuMF"_s, u"输入各科满分"_s, parent), m_marks(state, paths)
{
    m_marks.load();
    makeWidgets(label);
    connectEditor();
    MSFlexGrid1->setFocus();
}

void FormShuRuMF::makeWidgets(const QString& label)
{
    MSFlexGrid1 =
        named(new grid::FlexGridView(m_marks.marks, this), u"MSFlexGrid1"_s, u"各科满分"_s);
    // No buddy: the name of an exam can hold an "&", which would be an access key then.
    QLabel* Label1 = named(new QLabel(label, this), u"Label1"_s, label);
    Label1->setTextFormat(Qt::PlainText);
    Text1 = named(new grid::CellTextEditor(MSFlexGrid1), u"Text1"_s, u"满分"_s);
    QPushButton* Command1 = button(u"Command1"_s, u"确定(&O)"_s, this);
    QPushButton* Command2 = button(u"Command2"_s, u"设为默认(&D)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1);
    buttons->addWidget(Command2);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addWidget(MSFlexGrid1, 1);
    layout->addLayout(buttons);
    resize(fontMetrics().height() * 20, fontMetrics().height() * 24);
    connect(Command1, &QPushButton::clicked, this, &FormShuRuMF::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &FormShuRuMF::Command2_Click);
}

void FormShuRuMF::connectEditor()
{
    m_editor =
        new grid::ColumnEditor(MSFlexGrid1, Text1, CurCol, grid::ColumnEditor::OpenedBy::Release);
    connect(Text1, &QLineEdit::textChanged, this, &FormShuRuMF::Text1_Change);
    connect(Text1, &grid::CellTextEditor::entered, this, &FormShuRuMF::Text1_Enter);
}

void FormShuRuMF::Text1_Change()
{
    m_marks.setText(m_editor->CurRow(), Text1->text());
    MSFlexGrid1->refreshCell(m_editor->CurRow(), CurCol);
}

/// Enter goes down the rows, and behind the last one it accepts.
void FormShuRuMF::Text1_Enter()
{
    if (m_editor->CurRow() + 1 < m_marks.marks.Rows())
        m_editor->open(m_editor->CurRow() + 1);
    else
        Command1_Click();
}

void FormShuRuMF::Command1_Click()
{
    const std::optional<int> refused = m_marks.accept();
    if (refused)
        m_editor->open(*refused);
    else
        close();
}

bool FormShuRuMF::mayLeave()
{
    return m_marks.mayLeave();
}

void FormShuRuMF::Command2_Click()
{
    m_marks.saveDefaults();
}

} // namespace importing
