#include "Application/EventLoop.hpp"

#include "Orrenby/Platform/Scheduling/DescriptorWatch.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include <limits>
#include <utility>

namespace fieldbook {

using orrenby::RunLoop;

struct EventLoop::Entry {
    orrenby::DescriptorWatch watch;
    orrenby::Ref<orrenby::Timer> timer; ///< Only where the entry waits for a moment.
    Callback callback;
    bool isOver = false;

    ~Entry()
    {
        if (timer)
            timer->invalidate(); // the run loop would keep it
    }
};

EventLoop::Watch EventLoop::add(std::shared_ptr<Entry> entry)
{
    m_entries.push_back(entry);
    auto watch = Watch();
    watch.m_entry = std::move(entry);
    return watch;
}

EventLoop::Watch EventLoop::watch(int descriptor, Callback onReadable)
{
    auto entry = std::make_shared<Entry>();
    entry->watch = RunLoop::current().watch(descriptor, orrenby::NSDefaultRunLoopMode, std::move(onReadable));
    return add(std::move(entry));
}

EventLoop::Watch EventLoop::after(std::chrono::milliseconds delay, Callback callback)
{
    auto entry = std::make_shared<Entry>();
    entry->callback = std::move(callback);
    const auto call = [weak = std::weak_ptr(entry)] {
        const auto due = weak.lock();
        if (!due)
            return;
        due->isOver = true;
        std::exchange(due->callback, {})();
    };
    // A turn calls timers before descriptors. A block is left to the next turn, behind the descriptors of
    // this one.
    entry->timer = orrenby::Timer::scheduledTimerWithTimeInterval(
        std::chrono::duration<double>(delay).count(), false,
        [call](orrenby::Timer&) { RunLoop::current().perform(call, orrenby::NSDefaultRunLoopMode); });
    return add(std::move(entry));
}

void EventLoop::run()
{
    m_isRunning = true;
    while (m_isRunning && hasEntries())
        RunLoop::current().run(
            orrenby::NSDefaultRunLoopMode, orrenby::Date(std::numeric_limits<double>::infinity()));
}

void EventLoop::drain()
{
    const auto end = after(std::chrono::milliseconds(0), [this] { stop(); });
    run();
}

void EventLoop::stop()
{
    m_isRunning = false;
    RunLoop::current().stop();
}

bool EventLoop::hasEntries()
{
    std::erase_if(m_entries, [](const std::weak_ptr<Entry>& weak) {
        const auto entry = weak.lock();
        return !entry || entry->isOver;
    });
    return !m_entries.empty();
}

} // namespace fieldbook
