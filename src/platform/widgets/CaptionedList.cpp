#include "platform/widgets/CaptionedList.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>

#include "platform/widgets/Screen.h"

namespace widgets {

using namespace Qt::StringLiterals;

QListWidget* addList(QGridLayout* layout, const ListPlace& place, const QString& name,
                     const QString& caption, const QString& captionName)
{
    QWidget* const screen = layout->parentWidget();
    auto* list = named(new QListWidget(screen), name, {});
    auto* above =
        label(captionName.isEmpty() ? u"Label"_s + name : captionName, caption, list, screen);
    layout->addWidget(above, place.row, place.column, 1, place.columns);
    layout->addWidget(list, place.row + 1, place.column, 1, place.columns);
    return list;
}

QListWidget* addMultiList(QGridLayout* layout, const ListPlace& place, const QString& name,
                          const QString& caption, const QString& captionName)
{
    QListWidget* const list = addList(layout, place, name, caption, captionName);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* below = label(u"LabelHint"_s + name, multiSelectHint(), nullptr, layout->parentWidget());
    below->setWordWrap(true);
    layout->addWidget(below, place.row + 2, place.column, 1, place.columns);
    return list;
}

QString multiSelectHint()
{
    return u"按下Ctrl键或Shift键可多选"_s;
}

QStringList selectedTexts(const QListWidget* list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->isSelected())
            texts.append(list->item(i)->text());
    }
    return texts;
}

} // namespace widgets
