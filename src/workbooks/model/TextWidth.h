#pragma once

#include <QStringView>

namespace excel {

/// How many character cells a text takes in one line: a Chinese character is as wide as two others.
int characterCells(QStringView text);

} // namespace excel
