#pragma once

#include <QProxyStyle>

namespace widgets {

/// The desktop's style, with lines between cells, empty boxes and option buttons that can be seen
/// in a dark palette too.
class ProgramStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace widgets
