#include "import/ui/FormShuRuMF.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/grid/ui/CellEditors.h"
#include "platform/grid/ui/CellTextEditor.h"
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
    Text1->hide();
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
    connect(MSFlexGrid1, &grid::FlexGridView::cellReleased, this,
            &FormShuRuMF::MSFlexGrid1_MouseUp);
    connect(Text1, &QLineEdit::textChanged, this, &FormShuRuMF::Text1_Change);
    connect(Text1, &grid::CellTextEditor::entered, this, &FormShuRuMF::Text1_Enter);
    connect(Text1, &grid::CellTextEditor::moved, this, &FormShuRuMF::moveBy);
    connect(Text1, &grid::CellTextEditor::cancelled, this, &FormShuRuMF::cancel);
    grid::useOpeningKeys(Text1, MSFlexGrid1, [this](int row, int) { edit(row); });
}

void FormShuRuMF::MSFlexGrid1_MouseUp(int row)
{
    // An editor left open would write into the heading.
    if (row < m_marks.marks.FixedRows)
        grid::HideTS(Text1);
    edit(row);
}

void FormShuRuMF::Text1_Change()
{
    m_marks.setText(Text1->text());
    MSFlexGrid1->refreshCell(m_marks.CurRow, CurCol);
}

void FormShuRuMF::Text1_Enter()
{
    if (m_marks.enter())
        close();
    else
        edit(m_marks.CurRow);
}

void FormShuRuMF::Command1_Click()
{
    if (m_marks.accept())
        close();
    else
        edit(m_marks.CurRow);
}

void FormShuRuMF::Command2_Click()
{
    m_marks.saveDefaults();
}

void FormShuRuMF::edit(int row)
{
    m_marks.CurRow = row;
    if (row >= m_marks.marks.FixedRows && row < m_marks.marks.Rows())
        m_before = m_marks.marks.TextMatrix(row, CurCol);
    grid::ShowTextInMFG(Text1, MSFlexGrid1, row, CurCol);
}

/// Up and down go on editing; Tab, which moves by no row, leaves the column.
void FormShuRuMF::moveBy(int rows)
{
    const int row = m_marks.CurRow + rows;
    if (rows == 0)
        grid::HideTS(Text1);
    else if (row >= m_marks.marks.FixedRows && row < m_marks.marks.Rows())
        edit(row);
}

void FormShuRuMF::cancel()
{
    Text1->setText(m_before);
    grid::HideTS(Text1);
}

} // namespace importing
