#pragma once

#include <QString>

namespace individual {

/// Asks whether a class's charts go to one PDF file or to a folder of pictures, and to which; "" if
/// the user wants none. An existing PDF file has been asked about.
QString askClassChartsTarget(const QString& className);

} // namespace individual
