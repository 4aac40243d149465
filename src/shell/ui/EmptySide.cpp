#include "shell/ui/EmptySide.h"

#include <QFrame>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/widgets/Screen.h"
#include "shell/ui/Road.h"
#include "shell/ui/StartPage.h"

namespace shell {

using namespace Qt::StringLiterals;
using widgets::named;

EmptySide::EmptySide(library::ScoreLibrary& scoreLibrary, QWidget* parent)
    : QWidget(parent), m_library(scoreLibrary), m_page(new StartPage(this))
{
    setObjectName(u"EmptySide"_s);
    makeNote();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_page, 1);
    layout->addWidget(m_note, 0, Qt::AlignTop);
    refresh();
}

void EmptySide::makeNote()
{
    auto* note = named(new QFrame(this), u"NextStep"_s, u"下一步"_s);
    note->setFrameShape(QFrame::StyledPanel);
    // The picture is behind it.
    note->setAutoFillBackground(true);
    m_road = new Road(note);
    m_next = widgets::button(u"ButtonNextStep"_s, {}, note);
    auto* layout = new QVBoxLayout(note);
    layout->addWidget(m_road);
    layout->addWidget(m_next, 0, Qt::AlignLeft);
    connect(m_next, &QPushButton::clicked, this, [this] { Q_EMIT stepRequested(m_step); });
    m_note = note;
}

void EmptySide::refresh()
{
    m_step = nextStep(m_library);
    m_page->setVisible(m_step == Step::NewLibrary);
    m_note->setVisible(m_step != Step::NewLibrary && m_step != Step::Done);
    setVisible(m_step != Step::Done);
    m_road->showStep(m_step);
    const QString name = m_step == Step::Totals ? u"计算总分"_s : Road::nameOf(m_step);
    m_next->setText(u"下一步：%1(&1)"_s.arg(name) + (m_step == Step::Totals ? u""_s : u"…"_s));
    m_next->setAccessibleName(u"下一步："_s + name);
}

} // namespace shell
