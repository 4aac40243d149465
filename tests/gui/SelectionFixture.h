#pragma once

#include "workbench/WorkbenchFixture.h"
#include "workbench/ui/Selection.h"

namespace support {

/// The lists of the workbench over such a library, without their widgets.
class SelectionFixture : public WorkbenchTest
{
protected:
    SelectionFixture() { selection.fill(); }

    static void select(workbench::ChoiceList& list, const QStringList& selected)
    {
        for (workbench::ChoiceList::Item& item : list.items)
            item.selected = selected.contains(item.text);
    }

    workbench::Selection selection{library.scores};
};

} // namespace support
