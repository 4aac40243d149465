#pragma once

#include <functional>

#include <QFrame>

class QAbstractScrollArea;
class QLabel;
class QLineEdit;

namespace widgets {

/// The small bar in the lower right corner of a grid or a sheet that finds texts. Enter goes to the
/// next one, Shift+Enter to the former, Esc closes it.
class FindBar : public QFrame
{
    Q_OBJECT

public:
    /// Goes to the next place of a text in this direction; false if there is none.
    using Find = std::function<bool(const QString&, Qt::SortOrder)>;

    FindBar(QAbstractScrollArea* area, Find find);

    void open();
    /// Looks for the text once more, onward or backward.
    void find(Qt::SortOrder direction);
    /// Moves the bar into the corner; for when the area changed its size.
    void place();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void closeBar();

    QAbstractScrollArea* m_area;
    Find m_find;
    QLineEdit* FindText = nullptr;
    QLabel* FindResult = nullptr;
};

} // namespace widgets
