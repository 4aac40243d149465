#pragma once

#include <QBasicTimer>
#include <QObject>

namespace grid {

class FlexGridView;

/// Extending the selected block by the mouse with its button down. Outside the cells the block
/// grows by a cell at a time, as long as the mouse stays there.
class BlockDrag : public QObject
{
    Q_OBJECT

public:
    explicit BlockDrag(FlexGridView& view) : m_view(view) {}

    void start() { m_active = true; }
    bool isActive() const { return m_active; }
    void moveTo(const QPoint& place);
    void finish();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void extendTo(const QPoint& place);
    QRect cellArea() const;

    FlexGridView& m_view;
    QBasicTimer m_timer;
    bool m_active = false;
};

} // namespace grid
