#pragma once

#include <optional>

#include <QIODevice>
#include <QSize>

namespace maintenance {

/// What the markers of a JPEG file tell without its being unpacked.
struct JpegMarkers
{
    /// It goes on to its end; one that was copied in part does not.
    bool isWhole = false;
    /// A reader can give it line by line. It needs memory for all of any other (progressive) one.
    bool isSequential = false;
    /// In pixels, as the picture is stored; empty for a kind of picture that is not in use.
    QSize size;
};

/// Reads the markers from the device's first byte on, in pieces; nothing if it is no JPEG file.
std::optional<JpegMarkers> readJpegMarkers(QIODevice& device);

} // namespace maintenance
