#pragma once

#include <functional>

#include <QByteArray>
#include <QSizeF>

#include "individual/RankChart.h"

class QPageLayout;
class QPainter;

namespace individual {

/// Dots of a twip in a picture file of the given dots an inch.
constexpr double dotsOfTwip(double dotsPerInch)
{
    return dotsPerInch / 1440;
}

/// Of the PDF files that are made here.
constexpr int pdfDotsPerInch = 600;

/// True for a name that ends as files do that hold pictures of charts: .png, .bmp or .pdf.
bool isChartFile(const QString& path);

/// Writes the chart with its labels as it would stand on a screen, on white, as a .png, .bmp or
/// .pdf file as the name's ending says. An older file stays whole until the new one is. Throws
/// runtime::Error.
void saveChart(const RankChart& chart, const QString& path);

/// The bytes of a picture of this size in twips, white below what `paint` paints; `format` is
/// "png" or "bmp". Throws runtime::Error for a size that memory has no room for.
QByteArray pictureBytes(const QSizeF& twips, double dotsPerInch, const char* format,
                        const std::function<void(QPainter&, double scale)>& paint);

/// Puts a file that is made in one piece in the place of an older one. Throws runtime::Error.
void writeWhole(const QString& path, const QByteArray& bytes);

} // namespace individual
