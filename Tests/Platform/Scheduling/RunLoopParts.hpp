#pragma once

/// @file
/// Run loops and timers to try things with.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include "Tests/Support/ManualWorld.hpp"
#include <future>
#include <limits>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

inline constexpr auto infinity = std::numeric_limits<double>::infinity();
inline constexpr auto noNumber = std::numeric_limits<double>::quiet_NaN();

/// How much time has passed since the world began.
inline double secondsIn(ManualWorld& world) { return world.clock().monotonicSeconds() - 1024; }

/// One turn without waiting.
inline bool turn(std::string_view mode = NSDefaultRunLoopMode)
{
    return RunLoop::current().run(mode, Date::distantPast());
}

/// Fires once.
inline Ref<Timer> timerAt(double seconds, UniqueFunction<void(Timer&)> block)
{
    return Timer::scheduledTimerWithTimeInterval(seconds, false, std::move(block));
}

/// Repeats, and notes when it fires: in seconds since the world began.
inline Ref<Timer> recordingTimer(double seconds, ManualWorld& world, std::vector<double>& moments)
{
    return Timer::scheduledTimerWithTimeInterval(
        seconds, true, [&](Timer&) { moments.push_back(secondsIn(world)); });
}

/// Does what it was made with.
template <class F> class JobOf final : public Job {
public:
    explicit JobOf(F work)
        : m_work(std::move(work))
    {}
    void run() noexcept override { m_work(); }

private:
    F m_work;
};

/// The thread of a loop that runs until it is told to stop.
class LoopThread {
public:
    LoopThread()
        : m_thread([this] {
            auto& loop = RunLoop::current();
            const auto life = Timer::scheduledTimerWithTimeInterval(infinity, false, [](Timer&) {});
            m_loop.set_value(&loop);
            loop.run();
        })
    {}
    ~LoopThread()
    {
        loop().perform([this] { loop().stop(); });
        m_thread.join();
    }

    RunLoop& loop() { return *m_shared.get(); }

private:
    std::promise<RunLoop*> m_loop;
    std::shared_future<RunLoop*> m_shared = m_loop.get_future().share();
    std::thread m_thread;
};

} // namespace orrenby::testing
