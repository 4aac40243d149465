#include "workbench/ui/ChoiceList.h"

#include <algorithm>

namespace workbench {

void ChoiceList::clear()
{
    items.clear();
    ListIndex = -1;
}

void ChoiceList::add(const QString& text, Selected selected)
{
    items.push_back({text, selected == Selected::Yes});
}

int ChoiceList::selectedCount() const
{
    return int(
        std::count_if(items.begin(), items.end(), [](const Item& item) { return item.selected; }));
}

QStringList ChoiceList::selectedTexts() const
{
    QStringList texts;
    for (const Item& item : items) {
        if (item.selected)
            texts.append(item.text);
    }
    return texts;
}

QStringList ChoiceList::texts() const
{
    QStringList all;
    for (const Item& item : items)
        all.append(item.text);
    return all;
}

QString ChoiceList::currentText() const
{
    return ListIndex >= 0 && ListIndex < count() ? items[size_t(ListIndex)].text : QString();
}

void DropDown::reset(const QString& prompt)
{
    items.clear();
    text = prompt;
}

} // namespace workbench
