#pragma once

#include <vector>

#include <QObject>
#include <QStringList>

class QComboBox;

namespace grid {
class FlexGridView;
}

namespace importing {

/// Boxes with a choice for each column, laid over the first row of a grid behind its fixed columns.
/// Enter, F2 and Alt+↓ in the grid lead to the box of the current column.
class ColumnChoices : public QObject
{
    Q_OBJECT

public:
    /// What stands in the box of a column.
    struct Column
    {
        /// Among the entries; -1 for a column of which nothing is chosen yet.
        int entry = -1;
        /// What a screen reader says.
        QString name;
        /// Says why that is chosen.
        QString tip;
    };

    /// The view becomes the parent.
    explicit ColumnChoices(grid::FlexGridView* view);

    /// Shows these columns, one for each behind the grid's fixed ones.
    void show(const QStringList& entries, const std::vector<Column>& columns);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The user chose. `column` counts the boxes from 0.
    void chosen(int column, int entry);

private:
    void setCount(size_t count);
    QComboBox* makeBox(int column);
    void place();
    bool openByKey(const QEvent& event);

    grid::FlexGridView* m_view;
    std::vector<QComboBox*> m_boxes;
    QStringList m_entries;
};

} // namespace importing
