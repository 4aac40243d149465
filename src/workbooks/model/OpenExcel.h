#pragma once

#include <memory>
#include <vector>

#include "workbooks/model/Application.h"

namespace excel {

/// Every spreadsheet instance that was started, the latest last.
using Applications = std::vector<std::unique_ptr<Application>>;

/// The latest instance that still answers, as it is; if there is none, a new one, made visible.
Application& OpenExcel(Applications& applications);

} // namespace excel
