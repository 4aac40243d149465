#include "platform/widgets/ProgramStyle.h"

#include <QPainter>
#include <QStyleOption>
#include <QWidget>

#include "platform/widgets/MixedColor.h"

namespace widgets {

namespace {

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness()
           < palette.color(QPalette::WindowText).lightness();
}

} // namespace

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* returned) const
{
    return hint == SH_Table_GridLineColor && widget != nullptr
               ? int(gridLineColor(widget->palette()).rgba())
               : QProxyStyle::styleHint(hint, option, widget, returned);
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isRound = element == PE_IndicatorRadioButton;
    if ((!isRound && element != PE_IndicatorCheckBox) || !isDark(option->palette))
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, isRound);
    painter->setPen(mixedColor(option->palette.color(QPalette::Window),
                               option->palette.color(QPalette::WindowText), 0.4));
    painter->setBrush(Qt::NoBrush);
    const QRectF outline = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (isRound)
        painter->drawEllipse(outline);
    else
        painter->drawRect(outline);
    painter->restore();
}

} // namespace widgets
