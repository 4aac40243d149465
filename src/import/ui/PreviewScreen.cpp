#include "import/ui/PreviewScreen.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::named;

PreviewScreen::PreviewScreen(Preview preview, widgets::ScreenDialogs& dialogs, QWidget* parent)
    : DialogScreen(u"PreviewScreen"_s, u"导入预览"_s, parent),
      m_table(std::move(preview)),
      m_dialogs(dialogs)
{
    makeHead();
    makeGrid();
    makeButtons();
    layOut();
    gridPreview->setFocus();
}

void PreviewScreen::makeHead()
{
    const Preview& preview = m_table.preview();
    const auto sentence = [this](const QString& name, const QString& text) {
        QLabel* made = widgets::namedText(new QLabel(text, this), name);
        made->setWordWrap(true);
        made->setVisible(!text.isEmpty());
        return made;
    };
    labelWarning = sentence(u"labelWarning"_s, preview.warning);
    QFont loud = labelWarning->font();
    loud.setBold(true);
    labelWarning->setFont(loud);
    labelHeadline = sentence(u"labelHeadline"_s, preview.title + u'\n' + preview.headline());
    labelNotes = sentence(u"labelNotes"_s, preview.notes.join(u'\n'));
    comboKind = named(new QComboBox(this), u"comboKind"_s, u"只看"_s);
    comboKind->addItem(u"全部"_s);
    for (const PreviewKind kind : previewKinds()) {
        if (preview.count(kind) > 0)
            comboKind->addItem(u"%1（%2）"_s.arg(kindName(kind)).arg(preview.count(kind)),
                               int(kind));
    }
    connect(comboKind, &QComboBox::currentIndexChanged, this, &PreviewScreen::showKind);
}

void PreviewScreen::makeGrid()
{
    gridPreview =
        named(new grid::FlexGridView(m_table.grid, this), u"gridPreview"_s, u"导入预览"_s);
    // The remark is a sentence, which the columns before it leave the rest of the width.
    gridPreview->horizontalHeader()->setStretchLastSection(true);
    connect(gridPreview, &grid::FlexGridView::cellClicked, this, [this](int row, int column) {
        if (row < m_table.grid.FixedRows)
            sortBy(column);
    });
    connect(gridPreview, &grid::FlexGridView::menuRequested, this, &PreviewScreen::showMenu);
}

void PreviewScreen::makeButtons()
{
    buttonSave = button(u"buttonSave"_s, u"保存(&S)…"_s, this);
    buttonImport = button(u"buttonImport"_s, u"导入(&I)"_s, this);
    buttonClose = button(u"buttonClose"_s, u"关闭(&C)"_s, this);
    connect(buttonSave, &QPushButton::clicked, this, &PreviewScreen::save);
    connect(buttonImport, &QPushButton::clicked, this, &QDialog::accept);
    connect(buttonClose, &QPushButton::clicked, this, &QDialog::reject);
}

void PreviewScreen::layOut()
{
    auto* kinds = new QHBoxLayout;
    kinds->addWidget(widgets::label(u"labelKind"_s, u"只看(&K)"_s, comboKind, this));
    kinds->addWidget(comboKind);
    kinds->addStretch();
    kinds->addWidget(
        widgets::label(u"labelKeys"_s, u"点列标题排序，Ctrl+F 查找，Ctrl+C 复制"_s, nullptr, this));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(buttonSave);
    buttons->addStretch();
    buttons->addWidget(buttonImport);
    buttons->addWidget(buttonClose);
    auto* layout = new QVBoxLayout(this);
    for (QLabel* sentence : {labelWarning, labelHeadline, labelNotes})
        layout->addWidget(sentence);
    layout->addLayout(kinds);
    layout->addWidget(gridPreview, 1);
    layout->addLayout(buttons);
    resize(fontMetrics().averageCharWidth() * 150, fontMetrics().lineSpacing() * 34);
}

void PreviewScreen::showKind()
{
    const QVariant kind = comboKind->currentData();
    m_table.show(kind.isValid() ? std::optional(PreviewKind(kind.toInt())) : std::nullopt);
    gridPreview->refresh();
}

void PreviewScreen::sortBy(int column)
{
    m_table.sort(column);
    gridPreview->refresh();
}

void PreviewScreen::showMenu(const QPoint& place)
{
    QMenu menu(this);
    const int column = m_table.grid.Col;
    connect(menu.addAction(u"按这一列排序(&O)"_s), &QAction::triggered, this,
            [this, column] { sortBy(column); });
    menu.exec(place);
}

void PreviewScreen::save()
{
    const widgets::CommandScope command(m_dialogs);
    const QString file = runtime::ShowFileDialog(u"工作簿|*.xlsx"_s, runtime::FileMode::Save);
    const runtime::Trap trap{" - Sub SavePreview/Import"};
    if (!file.isEmpty())
        trap([&] { m_table.save(file); });
}

} // namespace importing
