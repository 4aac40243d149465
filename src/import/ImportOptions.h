#pragma once

namespace importing {

/// Whether a dated copy of the library is made before the first write.
enum class Backup { Make, SwitchedOff };

/// Stopped: refused, cancelled or not writable; the user was told.
enum class ImportResult { Finished, Stopped };

} // namespace importing
