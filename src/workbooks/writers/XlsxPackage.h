#pragma once

#include <deque>

#include <QByteArray>

#include "workbooks/writers/ScratchText.h"

namespace excel {

/// Whether every part of a package just written can be read to its end, XML parts to the end of
/// their last element. The library that writes them does not notice a full disk in all places.
bool isWhole(const QByteArray& fileName);

/// A package of the library with the rows put into its sheets, the first ones into the first
/// sheet; empty if that fails. The library itself would take three times as long to compress them.
QByteArray withRows(QByteArray package, std::deque<ScratchText>& rows);

} // namespace excel
