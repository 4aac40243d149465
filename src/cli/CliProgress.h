#pragma once

#include "platform/runtime/Progress.h"

namespace cli {

/// Progress on stderr when a person watches, silent otherwise.
class CliProgress : public runtime::Progress
{
public:
    CliProgress();
    ~CliProgress() override;

    void report(const QString& text, int done, int total) override;
    void finish() override;
    bool cancelled() const override { return false; }

private:
    bool m_watched;
    bool m_lineOpen = false;
};

} // namespace cli
