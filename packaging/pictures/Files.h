#pragma once

#include <vector>

#include <QImage>

/// The picture as a GIF. Throws std::runtime_error if it has more than 256 colours left when their
/// finest shades are dropped.
QByteArray gif(const QImage& picture);

/// An icon file of the given pictures, which are at most 256 pixels wide and high.
QByteArray ico(const std::vector<QImage>& pictures);
