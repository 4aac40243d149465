#pragma once

#include <functional>

namespace runtime {

/// A part of a run that counts whole or not at all. While one lives, what only tells something is
/// kept back, since a box that waits for the user must not keep the file locked; it is shown when
/// the outermost phase ends. Failures of file and memory are PhaseErrors meanwhile.
class Phase
{
public:
    Phase();
    /// Shows what was kept back.
    ~Phase();
    Phase(const Phase&) = delete;
    Phase& operator=(const Phase&) = delete;

    static bool isRunning();

    /// Keeps `telling` for the end of the running phase; false, and nothing kept, if none runs.
    static bool keepBack(std::function<void()> telling);
};

} // namespace runtime
