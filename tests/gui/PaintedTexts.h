#pragma once

#include <QEvent>
#include <QLabel>
#include <QStringList>

namespace support {

/// The texts that a label was painted with.
class PaintedTexts : public QObject
{
public:
    explicit PaintedTexts(QLabel* label) : m_label(label) { label->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !texts.contains(m_label->text()))
            texts.append(m_label->text());
        return false;
    }

    QStringList texts;

private:
    QLabel* m_label;
};

} // namespace support
