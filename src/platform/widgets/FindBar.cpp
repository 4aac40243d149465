#include "platform/widgets/FindBar.h"

#include <QAbstractScrollArea>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "platform/widgets/Screen.h"

namespace widgets {

using namespace Qt::StringLiterals;

FindBar::FindBar(QAbstractScrollArea* area, Find find)
    : QFrame(area), m_area(area), m_find(std::move(find))
{
    named(this, u"FindBar"_s, u"查找"_s);
    setAutoFillBackground(true);
    setFrameShape(QFrame::StyledPanel);
    FindText = named(new QLineEdit, u"FindText"_s, u"查找内容"_s);
    FindResult = namedText(new QLabel, u"FindResult"_s);
    auto* next = button(u"FindNext"_s, u"下一个"_s, this);
    auto* previous = button(u"FindPrevious"_s, u"上一个"_s, this);
    auto* shut = button(u"FindClose"_s, u"关闭"_s, this);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(label(u"FindLabel"_s, u"查找"_s, FindText, this));
    for (QWidget* part :
         std::initializer_list<QWidget*>{FindText, next, previous, FindResult, shut})
        layout->addWidget(part);
    connect(next, &QPushButton::clicked, this, [this] { this->find(Qt::AscendingOrder); });
    connect(previous, &QPushButton::clicked, this, [this] { this->find(Qt::DescendingOrder); });
    connect(shut, &QPushButton::clicked, this, &FindBar::closeBar);
    hide();
}

void FindBar::open()
{
    FindResult->clear();
    show();
    place();
    raise();
    FindText->setFocus(Qt::ShortcutFocusReason);
    FindText->selectAll();
}

void FindBar::find(Qt::SortOrder direction)
{
    const bool found = m_find(FindText->text(), direction);
    FindResult->setText(found || FindText->text().isEmpty() ? QString() : u"没有找到"_s);
    place();
}

void FindBar::place()
{
    adjustSize();
    const QRect corner = m_area->viewport()->geometry();
    move(std::max(corner.right() - width(), corner.left()), corner.bottom() - height());
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        closeBar();
        return;
    case Qt::Key_Enter:
    case Qt::Key_Return:
        find(event->modifiers() & Qt::ShiftModifier ? Qt::DescendingOrder : Qt::AscendingOrder);
        return;
    // The cells below would take the rest for their own keys.
    default:
        event->accept();
    }
}

void FindBar::closeBar()
{
    hide();
    m_area->setFocus(Qt::OtherFocusReason);
}

} // namespace widgets
