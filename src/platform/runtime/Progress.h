#pragma once

#include <functional>

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

/// A part of longer work: `tell` says in the words or counts of the whole what the part reports,
/// and the end of the part is not the end of the whole.
class PartProgress : public Progress
{
public:
    using Tell = std::function<void(const QString& text, int done, int total)>;

    PartProgress(const Progress& whole, Tell tell) : m_whole(whole), m_tell(std::move(tell)) {}

    void report(const QString& text, int done, int total) override { m_tell(text, done, total); }
    void finish() override {}
    bool cancelled() const override { return m_whole.cancelled(); }

private:
    const Progress& m_whole;
    Tell m_tell;
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
