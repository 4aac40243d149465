#include "configuration/ui/FormZDYXS.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <array>

#include "platform/grid/ui/FlexGridView.h"

namespace configuration {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::CommandScope;
using widgets::label;
using widgets::named;

FormZDYXS::FormZDYXS(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                     QWidget* parent)
    : Screen(u"FormZDYXS"_s, u"自定义显示"_s, parent), m_display(scoreLibrary), m_dialogs(dialogs)
{
    build();
    connectControls();
    Form_Load();
}

void FormZDYXS::build()
{
    MSFlexGrid1 =
        named(new grid::FlexGridView(m_display.columns, this), u"MSFlexGrid1"_s, u"显示项目"_s);
    MSFlexGrid1->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MSFlexGrid1, 1);
    layout->addWidget(makeStrip(), 0, Qt::AlignRight);
}

QWidget* FormZDYXS::makeStrip()
{
    auto* Picture1 = named(new QWidget(this), u"Picture1"_s, u"命令"_s);
    ComboKL = named(new QComboBox(Picture1), u"ComboKL"_s, u"科类"_s);
    CommandUP = button(u"CommandUP"_s, u"↑"_s, Picture1);
    CommandUP->setToolTip(u"上移"_s);
    CommandUP->setAccessibleName(u"上移"_s);
    CommandDown = button(u"CommandDown"_s, u"↓"_s, Picture1);
    CommandDown->setToolTip(u"下移"_s);
    CommandDown->setAccessibleName(u"下移"_s);
    Command1 = button(u"Command1"_s, u"确定(&O)"_s, Picture1);
    // Without a handler on purpose: the screen is left by its close box.
    auto* Command2 = button(u"Command2"_s, u"取消(&C)"_s, Picture1);
    auto* strip = new QHBoxLayout(Picture1);
    strip->setContentsMargins(0, 0, 0, 0);
    Label1 = label(u"Label1"_s, u"科类(&K)"_s, ComboKL, Picture1);
    for (QWidget* control : std::initializer_list<QWidget*>{Label1, ComboKL, CommandUP, CommandDown,
                                                            Command1, Command2})
        strip->addWidget(control);
    return Picture1;
}

void FormZDYXS::connectControls()
{
    connect(MSFlexGrid1, &grid::FlexGridView::cellReleased, this, &FormZDYXS::MSFlexGrid1_MouseUp);
    connect(CommandUP, &QPushButton::clicked, this, &FormZDYXS::CommandUP_Click);
    connect(CommandDown, &QPushButton::clicked, this, &FormZDYXS::CommandDown_Click);
    connect(Command1, &QPushButton::clicked, this, &FormZDYXS::Command1_Click);
}

void FormZDYXS::Form_Load()
{
    ComboKL->addItems(m_display.streamChoices());
    const int height = screen()->geometry().height() * 8 / 10;
    resize(fontMetrics().averageCharWidth() * 70, height);
}

void FormZDYXS::setItem(const QString& item, const QString& streamWord)
{
    XMName = item;
    ComboKL->setCurrentText(streamWord);
}

void FormZDYXS::setItemOfAllStreams(const QString& item, const QString& key)
{
    XMName = item;
    m_keyOfAllStreams = key;
    Label1->hide();
    ComboKL->hide();
}

void FormZDYXS::init()
{
    const CommandScope command(m_dialogs);
    setWindowTitle(u"自定义显示"_s + u"  "_s + XMName);
    m_display.load();
    Form_Resize();
}

void FormZDYXS::resizeEvent(QResizeEvent* event)
{
    Screen::resizeEvent(event);
    Form_Resize();
}

void FormZDYXS::showEvent(QShowEvent* event)
{
    // Not before now does the grid know its size.
    Form_Resize();
    Screen::showEvent(event);
}

void FormZDYXS::Form_Resize()
{
    grid::FlexGrid& cells = m_display.columns;
    cells.setColAlignment(-1, 0);
    cells.setRowHeight(-1, 300);
    MSFlexGrid1->shareWidth(std::array{8, 2});
}

void FormZDYXS::MSFlexGrid1_MouseUp(int MouseRow, int MouseCol)
{
    if (MouseCol == CustomDisplay::TickCol)
        m_display.flip(MouseRow);
    takeSelection();
    MSFlexGrid1->refreshCell(MouseRow, MouseCol);
}

void FormZDYXS::takeSelection()
{
    SelTop = std::min(m_display.columns.Row, m_display.columns.RowSel);
    SelBottom = std::max(m_display.columns.Row, m_display.columns.RowSel);
}

void FormZDYXS::CommandUP_Click()
{
    moveBlock(&CustomDisplay::moveUp);
}

void FormZDYXS::CommandDown_Click()
{
    moveBlock(&CustomDisplay::moveDown);
}

void FormZDYXS::moveBlock(RowBlock (CustomDisplay::*step)(RowBlock))
{
    const CommandScope command(m_dialogs);
    // Rows can be selected by keys as well, or by a drag that ended outside.
    takeSelection();
    const RowBlock block = (m_display.*step)({SelTop, SelBottom});
    SelTop = block.first;
    SelBottom = block.last;
    MSFlexGrid1->refresh();
    MSFlexGrid1->select(SelTop, m_display.columns.Col, SelBottom, m_display.columns.ColSel);
}

void FormZDYXS::Command1_Click()
{
    const CommandScope command(m_dialogs);
    m_display.save(key());
}

QString FormZDYXS::key() const
{
    return m_keyOfAllStreams.isEmpty() ? XMName + ComboKL->currentText() : m_keyOfAllStreams;
}

void FormZDYXS::keyPressEvent(QKeyEvent* event)
{
    // The space bar ticks, for those who work without a mouse.
    if (event->key() == Qt::Key_Space && focusWidget() == MSFlexGrid1)
        MSFlexGrid1_MouseUp(m_display.columns.RowSel, CustomDisplay::TickCol);
    else
        Screen::keyPressEvent(event);
}

} // namespace configuration
