#include "individual/paint/ChartFiles.h"

#include <cmath>

#include <QBuffer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

#include "individual/paint/RankChartPainter.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/UnfinishedFile.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

constexpr double screenDotsPerInch = 96;
constexpr double twipsOfPoint = 20;

QString ending(const QString& path)
{
    return QFileInfo(path).suffix().toLower();
}

void paintChart(const RankChart& chart, QPainter& painter, double scale)
{
    RankChartPainter(chart, scale, QGuiApplication::font()).paint(painter);
}

QByteArray pdfBytes(const RankChart& chart)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(pdfDotsPerInch);
    writer.setTitle(chart.name);
    const QPageSize size(QSizeF(chart.width, chart.height) / twipsOfPoint, QPageSize::Point,
                         QString(), QPageSize::ExactMatch);
    writer.setPageLayout(QPageLayout(size, QPageLayout::Portrait, QMarginsF()));
    QPainter painter(&writer);
    paintChart(chart, painter, dotsOfTwip(pdfDotsPerInch));
    painter.end();
    return buffer.data();
}

} // namespace

bool isChartFile(const QString& path)
{
    return QStringList{u"png"_s, u"bmp"_s, u"pdf"_s}.contains(ending(path));
}

QByteArray pictureBytes(const QSizeF& twips, double dotsPerInch, const char* format,
                        const std::function<void(QPainter&, double scale)>& paint)
{
    const double scale = dotsOfTwip(dotsPerInch);
    QImage image(int(std::ceil(twips.width() * scale)), int(std::ceil(twips.height() * scale)),
                 QImage::Format_RGB32);
    if (image.isNull())
        throw runtime::Error(u"图片太大，无法生成。"_s);
    image.setDotsPerMeterX(int(std::lround(dotsPerInch / 0.0254)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter, scale);
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format))
        throw runtime::Error(u"图片保存失败！"_s);
    return buffer.data();
}

void saveChart(const RankChart& chart, const QString& path)
{
    if (ending(path) == u"pdf"_s)
        return writeWhole(path, pdfBytes(chart));
    writeWhole(path, pictureBytes({chart.width, chart.height}, screenDotsPerInch,
                                  ending(path).toLatin1().constData(),
                                  [&](QPainter& painter, double scale) {
                                      paintChart(chart, painter, scale);
                                  }));
}

void writeWhole(const QString& path, const QByteArray& bytes)
{
    runtime::UnfinishedFile file(path);
    file.write(bytes);
    file.replace(path, path);
}

} // namespace individual
