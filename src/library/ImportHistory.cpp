#include "library/ImportHistory.h"

#include <algorithm>
#include <map>
#include <utility>

namespace library {

namespace {

/// Of each import so far.
using State = std::vector<Presence>;

/// Whether a time comes before another one.
class Order
{
public:
    explicit Order(const QDateTime& now) : m_now(now) {}
    bool operator()(const QDateTime& a, const QDateTime& b) const
    {
        const bool isAhead = a > m_now;
        return isAhead == (b > m_now) ? a < b : isAhead;
    }

private:
    const QDateTime m_now;
};

class Replay
{
public:
    explicit Replay(const QDateTime& now) : m_isBefore(now) {}

    void take(const HistoryStep& step)
    {
        if (step.kind == HistoryStep::Kind::Restored)
            m_state = restoredTo(step.restored);
        else if (step.kind == HistoryStep::Kind::MaybeRestored)
            doubt(restoredTo(step.restored));
        else
            copied(step);
        if (step.kind == HistoryStep::Kind::Imported)
            m_state.push_back(Presence::InLibrary);
    }

    /// The library equals a copy: what was in it then is in it now.
    void equals(size_t copy)
    {
        const auto found = m_ofCopies.find(copy);
        if (found != m_ofCopies.end())
            std::copy(found->second.begin(), found->second.end(), m_state.begin());
    }

    const State& state() const { return m_state; }

private:
    void copied(const HistoryStep& step)
    {
        equals(step.copy);
        m_ofCopies.emplace(step.copy, m_state);
        m_before.emplace_back(step.time, m_state);
    }

    State restoredTo(const QDateTime& time) const
    {
        if (!time.isValid())
            return State(m_state.size(), Presence::Unknown);
        const auto first = std::find_if(m_before.begin(), m_before.end(), [&](const auto& before) {
            return !m_isBefore(before.first, time);
        });
        State state = first == m_before.end() ? m_state : first->second;
        state.resize(m_state.size(), Presence::TakenBack);
        return state;
    }

    void doubt(const State& other)
    {
        for (size_t i = 0; i < m_state.size(); ++i) {
            if (m_state[i] != other[i])
                m_state[i] = Presence::Unknown;
        }
    }

    const Order m_isBefore;
    State m_state;
    /// What was in the library when each copy was made.
    std::map<size_t, State> m_ofCopies;
    std::vector<std::pair<QDateTime, State>> m_before;
};

} // namespace

void sortSteps(std::vector<HistoryStep>& steps, const QDateTime& now)
{
    const Order isBefore(now);
    std::stable_sort(steps.begin(), steps.end(),
                     [&](const auto& a, const auto& b) { return isBefore(a.time, b.time); });
}

std::vector<Presence> importsAfter(const std::vector<HistoryStep>& steps, const QDateTime& now,
                                   const EqualCopy& equal)
{
    Replay replay(now);
    for (const HistoryStep& step : steps)
        replay.take(step);
    if (equal.isThere)
        replay.equals(equal.copy);
    return replay.state();
}

} // namespace library
