#include "individual/ui/ChartSurface.h"

#include <QContextMenuEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>

#include "individual/paint/RankChartPainter.h"
#include "individual/ui/ChartLabel.h"
#include "platform/widgets/Screen.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

constexpr double twipsPerInch = 1440;
constexpr double metersPerInch = 0.0254;

} // namespace

ChartSurface::ChartSurface(QWidget* parent) : QWidget(parent)
{
    widgets::named(this, u"Picture1"_s, u"名次走势图"_s);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    LabelStuName = new ChartLabel(u"LabelStuName"_s, ChartLabel::Moves::Yes, this);
    LabelKSMC.push_back(new ChartLabel(u"LabelKSMC_0"_s, ChartLabel::Moves::No, this));
}

int ChartSurface::pixels(double twips) const
{
    return qRound(twips * logicalDpiX() / twipsPerInch);
}

double ChartSurface::lengthInTwips(int pixels) const
{
    return pixels * twipsPerInch / logicalDpiX();
}

QSizeF ChartSurface::twips() const
{
    return {lengthInTwips(width()), lengthInTwips(height())};
}

QColor ChartSurface::textColor() const
{
    return palette().color(QPalette::Text);
}

/// Two lines of larger letters have no room below the frame.
QFont ChartSurface::examFont() const
{
    QFont smaller = font();
    smaller.setPixelSize(std::min(fontInfo().pixelSize(), pixels(RankChartPainter::textSize)));
    return smaller;
}

ChartLabel& ChartSurface::examLabel(size_t index)
{
    while (LabelKSMC.size() <= index)
        LabelKSMC.push_back(
            new ChartLabel(u"LabelKSMC_%1"_s.arg(LabelKSMC.size()), ChartLabel::Moves::No, this));
    return *LabelKSMC[index];
}

ChartLabel& ChartSurface::rankLabel(size_t index)
{
    while (LabelMinCi.size() <= index)
        LabelMinCi.push_back(new ChartLabel(u"LabelMinCi_%1"_s.arg(LabelMinCi.size() + 1),
                                            ChartLabel::Moves::Yes, this));
    return *LabelMinCi[index];
}

void ChartSurface::show(const RankChart& chart)
{
    m_chart = chart;
    // Painted once, not for each label that moves.
    setUpdatesEnabled(false);
    showName(chart);
    showNote(chart);
    showExams(chart);
    showRanks(chart);
    setUpdatesEnabled(true);
}

void ChartSurface::showName(const RankChart& chart)
{
    LabelStuName->setContent(chart.name, textColor());
    const double top = RankChart::nameTop(lengthInTwips(LabelStuName->height()));
    LabelStuName->move((width() - LabelStuName->width()) / 2, pixels(top));
    LabelStuName->show();
}

void ChartSurface::showNote(const RankChart& chart)
{
    if (!chart.note)
        return;
    ChartLabel& note = examLabel(0);
    note.setContent(*chart.note, textColor());
    note.move(pixels(RankChart::notePlace), pixels(RankChart::notePlace));
    note.show();
}

void ChartSurface::showExams(const RankChart& chart)
{
    for (size_t i = 0; i < chart.examLabels.size(); ++i) {
        ChartLabel& label = examLabel(i + 1);
        label.setFont(examFont());
        label.setContent(chart.examLabels[i].text, textColor());
        const double top = chart.examLabelTop(lengthInTwips(label.height()));
        label.move(pixels(chart.examLabels[i].x) - label.width() / 2, pixels(top));
        label.show();
    }
}

void ChartSurface::showRanks(const RankChart& chart)
{
    for (size_t i = 0; i < chart.rankLabels.size(); ++i) {
        const RankChart::RankLabel& rank = chart.rankLabels[i];
        ChartLabel& label = rankLabel(i);
        label.setContent(rank.text, chartColor(rank.colour));
        label.setToolTip(rank.tip);
        label.move(pixels(rank.x) - label.width() / 2, pixels(rank.bottom) - label.height());
        label.show();
    }
    for (size_t i = chart.rankLabels.size(); i < LabelMinCi.size(); ++i)
        LabelMinCi[i]->hide();
}

QString ChartSurface::shownName() const
{
    return m_chart ? m_chart->name : QString();
}

QImage ChartSurface::picture()
{
    QImage image = grab().toImage().convertToFormat(QImage::Format_RGB32);
    // A program that shows the picture gives it the size that it has here.
    const double dots = logicalDpiX() * image.devicePixelRatio() / metersPerInch;
    image.setDotsPerMeterX(qRound(dots));
    image.setDotsPerMeterY(qRound(dots));
    return image;
}

void ChartSurface::paintEvent(QPaintEvent* event)
{
    if (!m_chart)
        return;
    QPainter painter(this);
    const ChartInk ink{textColor(), textColor()};
    RankChartPainter(*m_chart, logicalDpiX() / twipsPerInch, font(), ink).paintLines(painter);
    paintLabels(painter, event->rect());
}

void ChartSurface::paintLabels(QPainter& painter, const QRect& part) const
{
    std::vector<ChartLabel*> labels = LabelKSMC;
    labels.insert(labels.end(), LabelMinCi.begin(), LabelMinCi.end());
    labels.push_back(LabelStuName);
    for (const ChartLabel* label : labels) {
        if (!label->isHidden() && label->geometry().intersects(part))
            label->paintOn(painter);
    }
}

void ChartSurface::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT menuRequested(event->globalPos());
}

} // namespace individual
