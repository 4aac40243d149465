#pragma once

#include <QPalette>

namespace widgets {

/// A colour between two, so that it suits light and dark palettes; `share` 0 is all `one`, 1 all
/// `other`.
inline QColor mixedColor(const QColor& one, const QColor& other, double share)
{
    const auto part = [share](int a, int b) { return int(a + (b - a) * share); };
    return QColor(part(one.red(), other.red()), part(one.green(), other.green()),
                  part(one.blue(), other.blue()));
}

/// The lines between the cells of a table. A style's own are next to invisible in a dark palette.
inline QColor gridLineColor(const QPalette& palette)
{
    return mixedColor(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.18);
}

} // namespace widgets
