#pragma once

#include <functional>

#include "platform/runtime/Progress.h"

namespace support {

/// Notes what is reported, does something at each report, and is cancelled when told to.
class WatchedProgress : public runtime::Progress
{
public:
    QStringList texts;
    /// What is done, and of how many.
    std::vector<std::pair<int, int>> counts;
    int finished = 0;
    bool isStopped = false;
    /// Called at each report with what is done, and at the end.
    std::function<void(int)> onReport;
    std::function<void()> onFinish;

    void report(const QString& text, int done, int total) override
    {
        texts.append(text);
        counts.emplace_back(done, total);
        if (onReport)
            onReport(done);
    }
    void finish() override
    {
        ++finished;
        if (onFinish)
            onFinish();
    }
    bool cancelled() const override { return isStopped; }
};

} // namespace support
