#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;

namespace grid {

class FlexGridView;

/// The small bar in a grid's lower right corner that finds texts. Enter goes to the next one,
/// Shift+Enter to the former, Esc closes it.
class GridFindBar : public QFrame
{
    Q_OBJECT

public:
    explicit GridFindBar(FlexGridView* view);

    void open();
    /// Looks for the text once more, onward or backward.
    void find(Qt::SortOrder direction);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void closeBar();

    FlexGridView* m_view;
    QLineEdit* FindText = nullptr;
    QLabel* FindResult = nullptr;
};

} // namespace grid
