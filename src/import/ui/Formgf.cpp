#include "import/ui/Formgf.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/ColumnEditor.h"
#include "platform/grid/ui/FlexGridView.h"

namespace importing {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::named;

namespace {

constexpr int scoreColumn = 4;
const QString storeKey = u"Formgf/CheckStore"_s;

} // namespace

Formgf::Formgf(ImportState& state, QWidget* parent, Shown shown)
    : Screen(u"Formgf"_s, u"修改错误成绩"_s, parent), m_list(state)
{
    makeStoreBox(shown);
    makeWidgets(state);
    connectEditor();
    MSFlexGrid1->select(state.errors.FixedRows, scoreColumn, state.errors.FixedRows, scoreColumn);
    MSFlexGrid1->setFocus();
}

void Formgf::makeStoreBox(Shown shown)
{
    CheckStore = named(new QCheckBox(u"修改后的分值存入成绩库(&S)"_s, this), u"CheckStore"_s,
                       u"修改后的分值存入成绩库"_s);
    LabelStore = widgets::namedText(new QLabel(this), u"LabelStore"_s);
    LabelStore->setWordWrap(true);
    if (shown == Shown::AfterImport) {
        CheckStore->setEnabled(false);
        LabelStore->setText(
            u"导入已经完成，这里确认的分值不再存入成绩库。要改成绩，请用“修改成绩”。"_s);
        return;
    }
    CheckStore->setChecked(QSettings().value(storeKey).toBool());
    showNote();
    connect(CheckStore, &QCheckBox::clicked, this, &Formgf::CheckStore_Click);
}

void Formgf::CheckStore_Click()
{
    QSettings().setValue(storeKey, CheckStore->isChecked());
    showNote();
}

void Formgf::showNote()
{
    m_list.setDestination(CheckStore->isChecked() ? ErrorList::Destination::BadCells
                                                  : ErrorList::Destination::OneCell);
    LabelStore->setText(m_list.note());
}

void Formgf::makeWidgets(ImportState& state)
{
    MSFlexGrid1 =
        named(new grid::FlexGridView(state.errors, this), u"MSFlexGrid1"_s, u"有问题的成绩"_s);
    // The reason is wider than a column.
    MSFlexGrid1->horizontalHeader()->setStretchLastSection(true);
    QLabel* Label1 = widgets::label(u"Label1"_s, m_list.countText(), MSFlexGrid1, this);
    QLabel* Label2 =
        widgets::label(u"Label2"_s, u"点击相应成绩输入新成绩,回车确认"_s, nullptr, this);
    Text1 = named(new grid::CellTextEditor(MSFlexGrid1), u"Text1"_s, u"新成绩"_s);
    QPushButton* Command2 = button(u"Command2"_s, u"修改完毕(&O)"_s, this);
    // Without a handler on purpose: the screen is left when every score is answered, or by its
    // close box.
    QPushButton* Command1 = button(u"Command1"_s, u"取消(&C)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Label2, 1);
    buttons->addWidget(Command2);
    buttons->addWidget(Command1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addWidget(MSFlexGrid1, 1);
    layout->addWidget(CheckStore);
    layout->addWidget(LabelStore);
    layout->addLayout(buttons);
    setTabOrder(Text1, CheckStore);
    setTabOrder(CheckStore, Command2);
    resize(fontMetrics().height() * 42, fontMetrics().height() * 30);
    connect(Command2, &QPushButton::clicked, this, &Formgf::Command2_Click);
}

void Formgf::connectEditor()
{
    m_editor = new grid::ColumnEditor(MSFlexGrid1, Text1, scoreColumn,
                                      grid::ColumnEditor::OpenedBy::Click);
    // What was typed is answered as by Enter before the row is left.
    m_editor->askBeforeLeaving(
        [this] { return !Text1->isModified() || answer() != ErrorList::Entry::Refused; });
    connect(Text1, &grid::CellTextEditor::entered, this, &Formgf::Text1_Enter);
}

/// The next row becomes the current one, so that a list is worked off by typing and Enter.
void Formgf::Text1_Enter()
{
    if (answer() != ErrorList::Entry::Accepted)
        return;
    m_editor->close();
    const int next = std::min(m_editor->CurRow() + 1, MSFlexGrid1->grid().Rows() - 1);
    MSFlexGrid1->select(next, scoreColumn, next, scoreColumn);
}

void Formgf::Command2_Click()
{
    const std::optional<int> openRow = m_list.finish();
    if (openRow)
        m_editor->open(*openRow);
    else
        close();
}

/// A refused answer leaves the editor open on the bad score.
ErrorList::Entry Formgf::answer()
{
    const ErrorList::Entry entry = m_list.answer(m_editor->CurRow(), Text1->text());
    if (entry == ErrorList::Entry::Accepted)
        MSFlexGrid1->refreshCell(m_editor->CurRow(), ErrorList::ReasonColumn);
    else if (entry == ErrorList::Entry::Refused)
        m_editor->open(m_editor->CurRow());
    return entry;
}

} // namespace importing
