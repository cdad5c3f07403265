#include "Orrenby/Utilities/Timer+Block.hpp"

#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

Ref<Timer> scheduledTimer(double duration, bool repeats, Timer::Block block, TraceSite site)
{
    return scheduledTimer(duration, repeats, NSDefaultRunLoopMode, std::move(block), site);
}

Ref<Timer> scheduledTimer(
    double duration, bool repeats, std::string_view mode, Timer::Block block, TraceSite site)
{
    if (mode == NSDefaultRunLoopMode)
        return Timer::scheduledTimerWithTimeInterval(duration, repeats, std::move(block), site);
    auto timer = Timer::timerWithTimeInterval(duration, repeats, std::move(block));
    RunLoop::current().addTimer(timer, mode, site);
    return timer;
}

Ref<Timer> scheduledTimerWithDuration(double duration, bool repeats, Timer::Block block, TraceSite site)
{
    return scheduledTimer(duration, repeats, std::move(block), site);
}

void timerFired(Timer& timer)
{
    const auto info = timer.userInfo(); // a copy, because the call may end the timer
    if (const auto* block = info.get<TimerBlock>(); block != nullptr && *block)
        (*block)(timer);
    else if (const auto* function = info.get<void (*)(Timer&)>(); function != nullptr && *function != nullptr)
        (*function)(timer);
}

} // namespace orrenby
