#include "Files.h"

#include <map>
#include <stdexcept>

#include <QBuffer>

namespace {

void append16(QByteArray& bytes, int value)
{
    bytes.append(char(value & 0xff));
    bytes.append(char(value >> 8));
}

void append32(QByteArray& bytes, qsizetype value)
{
    append16(bytes, int(value & 0xffff));
    append16(bytes, int(value >> 16));
}

/// Codes of growing width, packed from the lowest bit on.
class BitWriter
{
public:
    void write(int code, int width)
    {
        m_bits |= quint32(code) << m_count;
        for (m_count += width; m_count >= 8; m_count -= 8) {
            m_bytes.append(char(m_bits & 0xff));
            m_bits >>= 8;
        }
    }

    QByteArray finish()
    {
        if (m_count > 0)
            m_bytes.append(char(m_bits & 0xff));
        return m_bytes;
    }

private:
    QByteArray m_bytes;
    quint32 m_bits = 0;
    int m_count = 0;
};

/// The compression of GIF: each code stands for a run that has been seen before.
QByteArray compressed(const QByteArray& pixels)
{
    constexpr int clear = 256;
    constexpr int firstFree = clear + 2;
    constexpr int mostCodes = 4096;
    BitWriter out;
    std::map<std::pair<int, uchar>, int> runs;
    int next = firstFree;
    int width = 9;
    out.write(clear, width);
    int run = uchar(pixels[0]);
    for (qsizetype i = 1; i < pixels.size(); ++i) {
        const std::pair longer(run, uchar(pixels[i]));
        if (const auto known = runs.find(longer); known != runs.end()) {
            run = known->second;
            continue;
        }
        out.write(run, width);
        run = longer.second;
        if (next == mostCodes) {
            out.write(clear, width);
            runs.clear();
            next = firstFree;
            width = 9;
            continue;
        }
        if (next == 1 << width)
            ++width;
        runs[longer] = next++;
    }
    out.write(run, width);
    out.write(clear + 1, width);
    return out.finish();
}

/// Pixels as numbers of colours, and the colours in the order of their numbers.
struct Indexed
{
    QByteArray pixels;
    std::vector<QRgb> colors;
};

Indexed indexed(const QImage& picture)
{
    constexpr QRgb withoutFinestShades = 0xfcfcfc;
    Indexed result;
    std::map<QRgb, int> numbers;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            const auto [found, added] =
                numbers.try_emplace(pixel & withoutFinestShades, int(numbers.size()));
            if (added)
                result.colors.push_back(pixel);
            result.pixels.append(char(found->second));
        }
    }
    if (result.colors.size() > 256)
        throw std::runtime_error("too many colours for a GIF");
    return result;
}

QByteArray png(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

} // namespace

QByteArray gif(const QImage& picture)
{
    Indexed image = indexed(picture);
    QByteArray bytes("GIF89a");
    append16(bytes, picture.width());
    append16(bytes, picture.height());
    bytes.append("\xf7\0\0", 3);
    image.colors.resize(256);
    for (const QRgb color : image.colors) {
        bytes.append(char(qRed(color)));
        bytes.append(char(qGreen(color)));
        bytes.append(char(qBlue(color)));
    }
    bytes.append("\x2c\0\0\0\0", 5);
    append16(bytes, picture.width());
    append16(bytes, picture.height());
    bytes.append("\0\x08", 2);
    const QByteArray data = compressed(image.pixels);
    for (qsizetype at = 0; at < data.size(); at += 255) {
        const QByteArray block = data.mid(at, 255);
        bytes.append(char(block.size()));
        bytes.append(block);
    }
    bytes.append("\0\x3b", 2);
    return bytes;
}

QByteArray ico(const std::vector<QImage>& pictures)
{
    constexpr int headerSize = 6;
    constexpr int entrySize = 16;
    QByteArray header;
    QByteArray data;
    append16(header, 0);
    append16(header, 1);
    append16(header, int(pictures.size()));
    for (const QImage& picture : pictures) {
        const QByteArray bytes = png(picture);
        // 256 is written as 0.
        header.append(char(picture.width() & 0xff));
        header.append(char(picture.height() & 0xff));
        append16(header, 0);
        append16(header, 1);
        append16(header, 32);
        append32(header, bytes.size());
        append32(header, headerSize + entrySize * qsizetype(pictures.size()) + data.size());
        data += bytes;
    }
    return header + data;
}
