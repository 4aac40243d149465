#include "platform/grid/ui/CellOpeningKeys.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"

namespace grid {

namespace {

class OpeningKeys : public QObject
{
public:
    OpeningKeys(CellTextEditor* box, FlexGridView* view, const std::function<void(int, int)>& open)
        : QObject(view), m_box(box), m_view(view), m_open(open)
    {
        view->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched != m_view || event->type() != QEvent::KeyPress)
            return false;
        auto* const key = static_cast<QKeyEvent*>(event);
        if (!opens(*key) && !types(*key))
            return false;
        m_open(m_view->grid().Row, m_view->grid().Col);
        if (types(*key) && m_box->isVisible()) {
            m_box->selectAll();
            QCoreApplication::sendEvent(m_box, event);
        }
        return true;
    }

private:
    static bool opens(const QKeyEvent& key)
    {
        return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_F2;
    }

    static bool types(const QKeyEvent& key)
    {
        const auto plain = Qt::ShiftModifier | Qt::KeypadModifier;
        return !(key.modifiers() & ~plain) && !key.text().isEmpty() && key.text()[0].isPrint();
    }

    CellTextEditor* m_box;
    FlexGridView* m_view;
    std::function<void(int, int)> m_open;
};

} // namespace

void useOpeningKeys(CellTextEditor* box, FlexGridView* view,
                    const std::function<void(int row, int col)>& open)
{
    new OpeningKeys(box, view, open);
}

} // namespace grid
