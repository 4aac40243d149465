#pragma once

#include <QStringList>

class QGridLayout;
class QListWidget;

namespace widgets {

/// Where a list stands in a layout: its caption in `row`, the list in the row below, a hint in the
/// next; all of them over so many columns.
struct ListPlace
{
    int row = 0;
    int column = 0;
    int columns = 1;
};

/// Adds a list of which one entry can be chosen, with its caption above, which leads to it by its
/// access key as in "科目(&M)". The caption's label is named `captionName`, otherwise "Label" and
/// the list's name.
QListWidget* addList(QGridLayout* layout, const ListPlace& place, const QString& name,
                     const QString& caption, const QString& captionName = {});

/// The same for a list of which several entries can be chosen, with the hint how below; its label
/// is named "LabelHint" and the list's name.
QListWidget* addMultiList(QGridLayout* layout, const ListPlace& place, const QString& name,
                          const QString& caption, const QString& captionName = {});

/// How several entries of a list are chosen.
QString multiSelectHint();

/// Texts of the selected entries, in list order.
QStringList selectedTexts(const QListWidget* list);

} // namespace widgets
