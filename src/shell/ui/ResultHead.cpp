#include "shell/ui/ResultHead.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/widgets/Screen.h"
#include "shell/ui/StaleNote.h"
#include "workbench/ui/NoteLabel.h"

namespace shell {

using namespace Qt::StringLiterals;

ResultHead::ResultHead(QWidget* parent) : QWidget(parent), LabelStale(new StaleNote(this))
{
    setObjectName(u"ResultHead"_s);
    LabelResultNote = new workbench::NoteLabel(u"LabelResultNote"_s, this);
    m_explain = widgets::button(u"buttonExplain"_s, u"口径…"_s, this);
    m_explain->setToolTip(u"这张表数的是什么，数哪些人，怎样计算"_s);
    m_explain->hide();
    auto* first = new QHBoxLayout;
    first->addWidget(LabelResultNote, 1);
    first->addWidget(m_explain, 0, Qt::AlignRight | Qt::AlignTop);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(first);
    layout->addWidget(LabelStale);
    connect(LabelResultNote, &workbench::NoteLabel::reportRequested, this,
            &ResultHead::reportRequested);
    connect(m_explain, &QPushButton::clicked, this, &ResultHead::explanationRequested);
    hide();
}

void ResultHead::showNotes(const std::vector<workbench::ReportNote>& notes, ResultKind kind)
{
    LabelResultNote->showNotes(notes);
    LabelStale->hide();
    m_explain->setVisible(kind == ResultKind::Report);
    setVisible(!notes.empty() || kind == ResultKind::Report);
}

void ResultHead::showStale(const QString& text)
{
    LabelStale->tell(text);
    show();
}

void ResultHead::clear()
{
    showNotes({}, ResultKind::Other);
}

} // namespace shell
