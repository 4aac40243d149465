#include "platform/runtime/Phase.h"

#include <utility>
#include <vector>

#include "platform/runtime/Trap.h"

namespace runtime {

namespace {

struct Running
{
    int depth = 0;
    std::vector<std::function<void()>> keptBack;
};

Running& running()
{
    static Running state;
    return state;
}

} // namespace

Phase::Phase()
{
    ++running().depth;
}

Phase::~Phase()
{
    if (--running().depth > 0)
        return;
    for (const std::function<void()>& telling : std::exchange(running().keptBack, {}))
        Trap::silent()(telling);
}

bool Phase::isRunning()
{
    return running().depth > 0;
}

bool Phase::keepBack(std::function<void()> telling)
{
    if (isRunning())
        running().keptBack.push_back(std::move(telling));
    return isRunning();
}

} // namespace runtime
