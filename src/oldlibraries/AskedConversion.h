#pragma once

#include <optional>

#include "oldlibraries/Conversion.h"
#include "platform/database/Connection.h"
#include "platform/runtime/AppPaths.h"

namespace oldlibraries {

/// Asks whether an old library is to be converted, for its password if it has one, and for the name
/// of the new library where the suggested one cannot be had; `open` is a library that the new one
/// does not replace. Nothing if the user gave up, or if the file cannot be converted, which is
/// told. What killed conversions left beside the old library goes.
std::optional<ConversionRequest> askForConversion(const QString& oldPath,
                                                  const database::Connection& open,
                                                  const runtime::AppPaths& paths);

/// Converts with a note of it in data/. Nothing if the user cancelled, or if it failed, which is
/// told.
std::optional<ConversionReport> convertAsked(const ConversionRequest& request,
                                             const runtime::AppPaths& paths,
                                             runtime::Progress& progress);

/// Tells what was converted; true if the user wants to read the report.
bool isReportWanted(const ConversionReport& report);

} // namespace oldlibraries
