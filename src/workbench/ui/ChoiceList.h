#pragma once

#include <vector>

#include <QStringList>

namespace workbench {

enum class Selected { No, Yes };

/// The state of a list from which several items can be selected.
struct ChoiceList
{
    struct Item
    {
        QString text;
        bool selected = false;
    };

    std::vector<Item> items;
    /// The current item, selected or not; -1 if there is none.
    int ListIndex = -1;

    void clear();
    void add(const QString& text, Selected selected);

    int count() const { return int(items.size()); }
    int selectedCount() const;
    /// In list order.
    QStringList selectedTexts() const;
    /// The text of the current item, or "".
    QString currentText() const;
    /// All, in list order.
    QStringList texts() const;
};

/// The state of a list from which one item is chosen.
struct SingleList
{
    QStringList items;
    int ListIndex = -1;

    QString text() const { return items.value(ListIndex); }
};

/// The state of a drop-down list whose text can also be none of its items.
struct DropDown
{
    QStringList items;
    QString text;

    /// Empties the list and shows `prompt`.
    void reset(const QString& prompt);
};

} // namespace workbench
