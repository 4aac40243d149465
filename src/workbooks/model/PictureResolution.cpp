#include "workbooks/model/PictureResolution.h"

#include <algorithm>
#include <cmath>

#include <QtEndian>

#include "workbooks/model/Points.h"

namespace excel {

namespace {

constexpr double dotsOfScreen = pointsPerInch / pointsPerPixel;
constexpr double metresPerInch = 0.0254;
constexpr double centimetresPerInch = 2.54;

quint32 bigAt(const QByteArray& bytes, qsizetype place)
{
    return qFromBigEndian<quint32>(bytes.constData() + place);
}

/// Dots per metre stand in a chunk of their own, which comes before the picture.
QSizeF pngResolution(const QByteArray& bytes)
{
    constexpr qsizetype firstChunk = 8;
    constexpr qsizetype chunkFrame = 12; // length, name, check
    constexpr qsizetype contentSize = 9;
    constexpr char perMetre = 1;
    qsizetype place = firstChunk;
    while (place + chunkFrame + contentSize <= bytes.size()) {
        const QByteArrayView name = QByteArrayView(bytes).sliced(place + 4, 4);
        if (name == "IDAT")
            break;
        if (name == "pHYs" && bytes[place + 16] == perMetre)
            return QSizeF(bigAt(bytes, place + 8), bigAt(bytes, place + 12)) * metresPerInch;
        place += chunkFrame + qsizetype(bigAt(bytes, place));
    }
    return {};
}

QSizeF bmpResolution(const QByteArray& bytes)
{
    constexpr qsizetype headSize = 46;
    constexpr qsizetype place = 38;
    if (bytes.size() < headSize)
        return {};
    const auto across = qFromLittleEndian<qint32>(bytes.constData() + place);
    const auto down = qFromLittleEndian<qint32>(bytes.constData() + place + 4);
    return QSizeF(across, down) * metresPerInch;
}

QSizeF jpegResolution(const QByteArray& bytes)
{
    constexpr qsizetype headSize = 18;
    constexpr char perInch = 1;
    constexpr char perCentimetre = 2;
    if (bytes.size() < headSize || !bytes.sliced(2).startsWith("\xFF\xE0")
        || bytes.sliced(6, 5) != QByteArrayView("JFIF\0", 5))
        return {};
    const QSizeF density(qFromBigEndian<quint16>(bytes.constData() + 14),
                         qFromBigEndian<quint16>(bytes.constData() + 16));
    if (bytes[13] == perCentimetre)
        return density * centimetresPerInch;
    return bytes[13] == perInch ? density : QSizeF();
}

QSizeF namedResolution(const QByteArray& bytes)
{
    if (bytes.startsWith("\x89PNG"))
        return pngResolution(bytes);
    return bytes.startsWith("BM") ? bmpResolution(bytes) : jpegResolution(bytes);
}

bool isPossible(double dots)
{
    constexpr double fewest = 10;
    constexpr double most = 10'000;
    return dots >= fewest && dots <= most;
}

} // namespace

QSizeF pictureResolution(const QByteArray& bytes)
{
    const QSizeF named = namedResolution(bytes);
    if (!isPossible(named.width()) || !isPossible(named.height()))
        return {dotsOfScreen, dotsOfScreen};
    // A file in metres names the whole number of an inch a little off.
    return {std::round(named.width()), std::round(named.height())};
}

} // namespace excel
