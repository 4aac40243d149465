#pragma once

#include <QString>

namespace statistics {

/// Widths of the bands of 各分数段人数, for subjects and for totals.
struct BandWidths
{
    double subject = 0;
    double total = 0;

    /// Reads "单科10,总分50": two characters, then the number; 0 where there is none.
    static BandWidths parse(const QString& setting);

    /// There are bands of both widths.
    bool areUsable() const { return subject > 0 && total > 0; }
    /// What the report says of widths that are not usable.
    QString refusal() const;
};

} // namespace statistics
