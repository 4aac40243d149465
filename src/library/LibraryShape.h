#pragma once

#include "platform/database/OpenFile.h"

namespace library {

/// What makes a file a score library: its tables, and the indexes that an older file is given when
/// it is first written.
database::FileShape libraryShape();

} // namespace library
