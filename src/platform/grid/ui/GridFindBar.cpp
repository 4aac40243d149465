#include "platform/grid/ui/GridFindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/ui/Screen.h"

namespace grid {

using namespace Qt::StringLiterals;

GridFindBar::GridFindBar(FlexGridView* view) : QFrame(view), m_view(view)
{
    runtime::named(this, u"FindBar"_s, u"查找"_s);
    setAutoFillBackground(true);
    setFrameShape(QFrame::StyledPanel);
    FindText = runtime::named(new QLineEdit, u"FindText"_s, u"查找内容"_s);
    FindResult = runtime::named(new QLabel, u"FindResult"_s, u"查找结果"_s);
    auto* next = runtime::button(u"FindNext"_s, u"下一个"_s, this);
    auto* previous = runtime::button(u"FindPrevious"_s, u"上一个"_s, this);
    auto* shut = runtime::button(u"FindClose"_s, u"关闭"_s, this);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(runtime::label(u"FindLabel"_s, u"查找"_s, FindText, this));
    for (QWidget* part :
         std::initializer_list<QWidget*>{FindText, next, previous, FindResult, shut})
        layout->addWidget(part);
    connect(next, &QPushButton::clicked, this, [this] { find(Qt::AscendingOrder); });
    connect(previous, &QPushButton::clicked, this, [this] { find(Qt::DescendingOrder); });
    connect(shut, &QPushButton::clicked, this, &GridFindBar::closeBar);
    hide();
}

void GridFindBar::open()
{
    FindResult->clear();
    show();
    m_view->placeFindBar();
    raise();
    FindText->setFocus(Qt::ShortcutFocusReason);
    FindText->selectAll();
}

void GridFindBar::find(Qt::SortOrder direction)
{
    const bool found = m_view->findText(FindText->text(), direction);
    FindResult->setText(found || FindText->text().isEmpty() ? QString() : u"没有找到"_s);
    m_view->placeFindBar();
}

void GridFindBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        closeBar();
        return;
    case Qt::Key_Enter:
    case Qt::Key_Return:
        find(event->modifiers() & Qt::ShiftModifier ? Qt::DescendingOrder : Qt::AscendingOrder);
        return;
    // The grid below would take the rest for its own keys.
    default:
        event->accept();
    }
}

void GridFindBar::closeBar()
{
    hide();
    m_view->setFocus(Qt::OtherFocusReason);
}

} // namespace grid
