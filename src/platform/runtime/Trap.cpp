#include "platform/runtime/Trap.h"

#include <exception>
#include <new>
#include <stdexcept>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Phase.h"

namespace runtime {

using namespace Qt::StringLiterals;

void Trap::fail(const QString& description) const
{
    if (!m_tag)
        return;
    const QString text = description + QString::fromUtf8(m_tag);
    // Before it is kept back: a phase can fail a hundred thousand times.
    if (Dialogs::folded(text))
        return;
    const auto tell = [text] { Dialogs::current().failure(text); };
    if (!Phase::keepBack(tell))
        tell();
}

void Trap::tellEnd(const QString& description) const
{
    if (!m_tag)
        return;
    const QString text = description + QString::fromUtf8(m_tag);
    const auto tell = [text] { Dialogs::current().phaseFailed(text); };
    if (!Phase::keepBack(tell))
        tell();
}

void Trap::report() const
{
    try {
        throw;
    } catch (const PhaseError& error) {
        if (Phase::isRunning())
            throw;
        tellEnd(error.description());
    } catch (const Error& error) {
        if (error.endsPhase())
            tellEnd(error.description());
        else
            fail(error.description());
    } catch (const std::logic_error&) {
        // A mistake of ours is not the user's to read away.
        throw;
    } catch (const std::bad_alloc&) {
        if (Phase::isRunning())
            throw PhaseError(u"内存不足。"_s);
        fail(u"内存不足。"_s);
    } catch (const std::exception& error) {
        fail(QString::fromUtf8(error.what()));
    }
}

} // namespace runtime
