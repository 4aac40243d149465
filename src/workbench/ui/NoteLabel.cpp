#include "workbench/ui/NoteLabel.h"

namespace workbench {

using namespace Qt::StringLiterals;

NoteLabel::NoteLabel(const QString& objectName, QWidget* parent) : QLabel(parent)
{
    setObjectName(objectName);
    setTextFormat(Qt::RichText);
    setWordWrap(true);
    setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    // The panels behind it have pictures.
    setAutoFillBackground(true);
    setFrameShape(QFrame::StyledPanel);
    hide();
    connect(this, &QLabel::linkActivated, this, [this](const QString& place) {
        const size_t note = place.toUInt();
        // A copy: following the link changes the notes.
        if (note < m_notes.size())
            Q_EMIT reportRequested(ReportRequest(m_notes[note].instead));
    });
}

void NoteLabel::showNotes(const std::vector<ReportNote>& notes)
{
    m_notes = notes;
    QStringList lines;
    QStringList spoken;
    for (const ReportNote& note : notes) {
        lines.append(u"%1 <a href=\"%2\">%3</a>"_s.arg(note.text.toHtmlEscaped())
                         .arg(lines.size())
                         .arg(note.offer.toHtmlEscaped()));
        spoken.append(note.text + note.offer);
    }
    setText(lines.join(u"<br>"_s));
    setAccessibleName(u"提示："_s + spoken.join(u'\n'));
    setVisible(!notes.empty());
}

} // namespace workbench
