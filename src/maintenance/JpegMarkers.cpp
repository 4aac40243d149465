#include "maintenance/JpegMarkers.h"

#include <algorithm>

#include <QByteArray>

namespace maintenance {

namespace {

constexpr int escape = 0xFF;
constexpr int baselineFrame = 0xC0;
constexpr int extendedFrame = 0xC1;
constexpr int progressiveFrame = 0xC2;
constexpr int lastFrame = 0xCF;
constexpr int firstRestart = 0xD0;
constexpr int lastRestart = 0xD7;
constexpr int begin = 0xD8;
constexpr int end = 0xD9;
constexpr int scan = 0xDA;

/// Behind the last byte.
struct AtEnd
{
};

/// The bytes of a device, of which a piece is in memory.
class PieceReader
{
public:
    explicit PieceReader(QIODevice& device) : m_device(device) {}

    int u8()
    {
        if (m_at == m_piece.size())
            nextPiece();
        return static_cast<unsigned char>(m_piece.at(m_at++));
    }
    int u16()
    {
        const int high = u8();
        return high << 8 | u8();
    }
    void skip(qsizetype count)
    {
        for (; count > m_piece.size() - m_at; nextPiece())
            count -= m_piece.size() - m_at;
        m_at += count;
    }
    void skipTo(int byte)
    {
        for (;; nextPiece()) {
            m_at = m_piece.indexOf(static_cast<char>(byte), m_at);
            if (m_at >= 0)
                return;
        }
    }

private:
    void nextPiece()
    {
        constexpr qint64 pieceSize = 65536;
        m_piece = m_device.read(pieceSize);
        m_at = 0;
        if (m_piece.isEmpty())
            throw AtEnd();
    }

    QIODevice& m_device;
    QByteArray m_piece;
    qsizetype m_at = 0;
};

bool isFrame(int marker)
{
    // Three numbers of the range are those of tables.
    return marker >= baselineFrame && marker <= lastFrame && marker != 0xC4 && marker != 0xC8
           && marker != 0xCC;
}

bool standsAlone(int marker)
{
    return marker == begin || marker == 0x01 || (marker >= firstRestart && marker <= lastRestart);
}

/// The next marker; what stands ahead of it is the data of a scan.
int nextMarker(PieceReader& bytes)
{
    for (;;) {
        bytes.skipTo(escape);
        int marker = escape;
        while (marker == escape)
            marker = bytes.u8();
        if (marker != 0)
            return marker;
    }
}

/// Goes from marker to marker up to the end.
class Walk
{
public:
    explicit Walk(QIODevice& device) : m_bytes(device) {}

    /// Throws AtEnd for a file that ends too early.
    void go()
    {
        for (int marker = begin; marker != end; marker = nextMarker(m_bytes)) {
            if (!standsAlone(marker))
                passSegment(marker);
        }
        markers.isWhole = m_hasScan;
    }

    JpegMarkers markers;

private:
    void passSegment(int marker)
    {
        constexpr int lengthItself = 2;
        int left = m_bytes.u16() - lengthItself;
        if (isFrame(marker))
            left -= readFrame(marker);
        else if (marker == scan)
            left -= readScan();
        m_bytes.skip(std::max(left, 0));
    }

    /// Gives the number of bytes that it read, as readScan does.
    int readFrame(int marker)
    {
        markers.isSequential = marker == baselineFrame || marker == extendedFrame;
        constexpr int usualBits = 8;
        const int bits = m_bytes.u8();
        const int height = m_bytes.u16();
        const int width = m_bytes.u16();
        m_components = m_bytes.u8();
        if (marker <= progressiveFrame && bits == usualBits)
            markers.size = {width, height};
        return 6;
    }

    int readScan()
    {
        m_hasScan = true;
        // Colours that follow one another are put together in memory.
        if (m_bytes.u8() != m_components)
            markers.isSequential = false;
        return 1;
    }

    PieceReader m_bytes;
    int m_components = 0;
    bool m_hasScan = false;
};

} // namespace

std::optional<JpegMarkers> readJpegMarkers(QIODevice& device)
{
    if (!device.seek(0) || device.peek(2) != QByteArray("\xFF\xD8"))
        return {};
    Walk walk(device);
    try {
        walk.go();
    } catch (const AtEnd&) {
        walk.markers.isWhole = false;
    }
    return walk.markers;
}

} // namespace maintenance
