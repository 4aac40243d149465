#pragma once

#include <optional>

#include "import/preview/Preview.h"
#include "platform/grid/FlexGrid.h"

namespace importing {

/// The entries of a preview as a table that is narrowed to a kind and sorted.
class PreviewTable
{
public:
    explicit PreviewTable(Preview preview);
    PreviewTable(const PreviewTable&) = delete;
    PreviewTable& operator=(const PreviewTable&) = delete;

    const Preview& preview() const { return m_preview; }

    /// What is shown: a row of headings and a row an entry. Long texts are cut, and line breaks
    /// shown by signs.
    grid::FlexGrid grid;

    /// Shows the entries of one kind, or all of them.
    void show(std::optional<PreviewKind> kind);

    /// Sorts by a column: numbers ahead of texts, empty cells last, equal ones in their order. The
    /// column that it is sorted by already is turned round.
    void sort(int column);

    /// The shown entries in their order.
    const std::vector<const PreviewEntry*>& shown() const { return m_shown; }

    /// Writes the sentences and the shown entries as a workbook in place of an older file. Throws
    /// runtime::Error; the older file stands as it was then.
    void save(const QString& path) const;

private:
    void order();
    void fill();

    Preview m_preview;
    std::optional<PreviewKind> m_kind;
    std::optional<int> m_column;
    Qt::SortOrder m_order = Qt::AscendingOrder;
    std::vector<const PreviewEntry*> m_shown;
};

} // namespace importing
