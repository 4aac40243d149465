#pragma once

#include <QString>

namespace runtime {

/// The error trap of one routine: a failing statement is shown with the routine's tag, and the next
/// statement runs. Within a Phase a PhaseError passes, so that it is the trap around the phase that
/// shows it.
///
///     const Trap trap{" - Sub PaiMC/Mdl_MDB"};
///     trap([&] { rows.Open(sql); });
class Trap
{
public:
    /// `tag` must outlive the trap; it is a literal.
    explicit Trap(const char* tag) : m_tag(tag) {}

    /// A trap that passes over errors without a message.
    static Trap silent() { return Trap(nullptr); }

    /// Runs the statement; false if it failed. The failure has been shown then.
    template <class Statement> bool operator()(Statement&& statement) const
    {
        try {
            statement();
            return true;
        } catch (...) {
            report();
            return false;
        }
    }

    /// Shows a failure that was not thrown, in the same way.
    void fail(const QString& description) const;

private:
    void report() const;
    /// Shows that a phase failed, however many failures were shown before.
    void tellEnd(const QString& description) const;

    const char* m_tag;
};

} // namespace runtime
