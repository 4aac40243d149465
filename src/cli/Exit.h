#pragma once

namespace cli {

/// What the program ends with.
enum class Exit {
    Done = 0,  ///< the command did what was asked
    Error = 1, ///< a message box with an error would have been shown, or the command stopped early
    Usage = 2  ///< the command line is wrong, or names something that the library does not have
};

} // namespace cli
