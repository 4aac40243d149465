#include "workbench/ui/FigureScreen.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/grid/ui/FlexGridView.h"

namespace workbench {

using namespace Qt::StringLiterals;
using widgets::button;

FigureScreen::FigureScreen(FigureList list, QWidget* parent)
    : DialogScreen(u"FigureScreen"_s, u"查看名单"_s, parent), m_list(std::move(list))
{
    auto* layout = new QVBoxLayout(this);
    addText(layout, u"figureSentence"_s, m_list.sentence);
    addText(layout, u"figureDetails"_s, m_list.details);
    addText(layout, u"figureChange"_s, m_list.change);
    addList(layout);
    addSql(layout);
    addButtons(layout);
    resize(fontMetrics().averageCharWidth() * 130, fontMetrics().lineSpacing() * 34);
    m_view->setFocus();
}

void FigureScreen::addText(QVBoxLayout* layout, const QString& name, const QString& text)
{
    auto* label = widgets::namedText(new QLabel(text, this), name);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setHidden(text.isEmpty());
    layout->addWidget(label);
}

void FigureScreen::addList(QVBoxLayout* layout)
{
    m_view = widgets::named(new grid::FlexGridView(m_list.grid, this), u"figureGrid"_s, u"名单"_s);
    connect(m_view, &grid::FlexGridView::cellClicked, this, [this](int row, int col) {
        if (row < m_list.grid.FixedRows)
            sortBy(col);
    });
    layout->addWidget(m_view, 1);
}

void FigureScreen::addSql(QVBoxLayout* layout)
{
    auto* shown =
        widgets::named(new QCheckBox(u"显示SQL语句(&Q)"_s), u"figureSqlShown"_s, u"显示SQL语句"_s);
    auto* text = widgets::named(new QPlainTextEdit(m_list.sql, this), u"figureSql"_s, u"SQL语句"_s);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setMaximumHeight(fontMetrics().lineSpacing() * 5);
    text->hide();
    connect(shown, &QCheckBox::toggled, text, &QWidget::setVisible);
    layout->addWidget(shown);
    layout->addWidget(text);
}

void FigureScreen::addButtons(QVBoxLayout* layout)
{
    QPushButton* sorting = button(u"figureSort"_s, u"按所在列排序(&S)"_s, this);
    QPushButton* copying = button(u"figureCopy"_s, u"全部复制(&C)"_s, this);
    QPushButton* exporting = button(u"figureExport"_s, u"导出到Excel(&E)"_s, this);
    QPushButton* closing = button(u"figureClose"_s, u"关闭(&X)"_s, this);
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (QPushButton* one : {sorting, copying, exporting, closing})
        row->addWidget(one);
    layout->addLayout(row);
    connect(sorting, &QPushButton::clicked, this, [this] { sortBy(m_list.grid.ColSel); });
    connect(copying, &QPushButton::clicked, this, &FigureScreen::copyAll);
    connect(exporting, &QPushButton::clicked, this,
            [this] { Q_EMIT exportRequested(m_list.grid); });
    connect(closing, &QPushButton::clicked, this, &QDialog::close);
}

void FigureScreen::sortBy(int col)
{
    const bool again = col == m_sortedCol && m_order == grid::SortOrder::Ascending;
    m_order = again ? grid::SortOrder::Descending : grid::SortOrder::Ascending;
    m_sortedCol = col;
    grid::MFGSort(m_list.grid, col, grid::sortKindOf(m_list.grid, col), m_order);
    m_view->refresh();
}

void FigureScreen::copyAll()
{
    m_view->selectAll();
    QApplication::clipboard()->setMimeData(m_view->selectedCells());
}

} // namespace workbench
