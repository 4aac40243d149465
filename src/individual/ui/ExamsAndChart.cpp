#include "individual/ui/ExamsAndChart.h"

#include <QHelpEvent>
#include <QToolTip>

#include "individual/StudentExams.h"
#include "individual/ui/ChartSurface.h"
#include "individual/ui/SplitterBar.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/widgets/Screen.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

constexpr int topMargin = 30; // in twips

} // namespace

ExamsAndChart::ExamsAndChart(grid::FlexGrid& exams, QWidget* parent)
    : QWidget(parent),
      m_gridHeight(fontMetrics().lineSpacing() * 12),
      MSFlexGrid1(widgets::named(new grid::FlexGridView(exams, this), u"MSFlexGrid1"_s,
                                 u"学生的各次考试"_s)),
      PictureW(new SplitterBar(this)),
      Picture1(new ChartSurface(this))
{
    MSFlexGrid1->viewport()->installEventFilter(this);
    setMinimumSize(fontMetrics().averageCharWidth() * 40, fontMetrics().lineSpacing() * 12);
    connect(PictureW, &SplitterBar::moved, this, &ExamsAndChart::moveSplitter);
    connect(PictureW, &SplitterBar::released, this, &ExamsAndChart::splitterReleased);
    connect(MSFlexGrid1, &grid::FlexGridView::menuRequested, this, &ExamsAndChart::menuRequested);
    connect(Picture1, &ChartSurface::menuRequested, this, &ExamsAndChart::menuRequested);
}

void ExamsAndChart::setGridHeight(int height)
{
    m_gridHeight = std::max(0, height);
    place();
}

void ExamsAndChart::place()
{
    const int bar = PictureW->height();
    const int top = std::clamp(m_gridHeight, 0, std::max(0, height() - bar));
    MSFlexGrid1->setGeometry(0, 0, width(), top);
    PictureW->setGeometry(0, top, width(), bar);
    Picture1->setGeometry(0, top + bar, width(), std::max(0, height() - top - bar));
}

void ExamsAndChart::moveSplitter(int distance)
{
    const int top = PictureW->y() + distance;
    setGridHeight(top < 0 ? MSFlexGrid1->pixels(topMargin)
                          : std::min(top, height() - PictureW->height()));
}

void ExamsAndChart::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    place();
}

void ExamsAndChart::showTip(const QPoint& place, const QPoint& globalPlace) const
{
    const QModelIndex cell = MSFlexGrid1->indexAt(place);
    const QString tip =
        cell.isValid() ? cellTip(MSFlexGrid1->grid(), cell.row(), cell.column()) : QString();
    // A name that looks like markup is shown as it stands.
    const QString shown =
        tip.contains(u'<') ? u"<span>"_s + tip.toHtmlEscaped() + u"</span>"_s : tip;
    QToolTip::showText(globalPlace, shown, MSFlexGrid1->viewport());
}

bool ExamsAndChart::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::eventFilter(watched, event);
    const auto* help = static_cast<QHelpEvent*>(event);
    showTip(help->pos(), help->globalPos());
    return true;
}

} // namespace individual
