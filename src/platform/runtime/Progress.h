#pragma once

#include <QString>

namespace runtime {

/// How long work tells where it stands, and learns that the user wants it to stop.
class Progress
{
public:
    virtual ~Progress() = default;

    /// `text` names the work ("计算总分：期中..."), `done` of `total` units are finished. A total
    /// of 0 means that the amount is not known.
    virtual void report(const QString& text, int done, int total) = 0;

    /// The work is over, done or cancelled: nothing is shown any more.
    virtual void finish() = 0;

    /// True once the user pressed 取消.
    virtual bool cancelled() const = 0;
};

/// Progress that nobody watches.
class NoProgress : public Progress
{
public:
    void report(const QString&, int, int) override {}
    void finish() override {}
    bool cancelled() const override { return false; }
};

} // namespace runtime
