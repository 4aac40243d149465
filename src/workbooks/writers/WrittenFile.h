#pragma once

#include <QByteArray>

namespace excel {

/// Whether every part of a zip file just written can be read to its end, XML parts to the end of
/// their last element. The library that writes them does not notice a full disk in all places.
bool isWhole(const QByteArray& fileName);

} // namespace excel
