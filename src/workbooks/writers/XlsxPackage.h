#pragma once

#include <deque>

#include <QByteArray>

#include "workbooks/writers/ScratchText.h"

namespace excel {

/// A package of the library with the rows put into its sheets, the first ones into the first
/// sheet; empty if that fails. The library would compress them twice as long for a file as large.
QByteArray withRows(QByteArray package, std::deque<ScratchText>& rows);

} // namespace excel
