#include "EventLoop.hpp"

#include <cerrno>
#include <cstddef>
#include <poll.h>
#include <sys/timerfd.h>
#include <system_error>
#include <utility>

namespace fieldbook {

struct EventLoop::Entry {
    int descriptor;
    Callback callback;
    Descriptor timer; ///< Only where the entry waits for a moment.
};

namespace {

void check(bool isGood, const char* what)
{
    if (!isGood)
        throw std::system_error(errno, std::generic_category(), what);
}

Descriptor timerAfter(std::chrono::milliseconds delay)
{
    auto timer = Descriptor(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK));
    check(static_cast<bool>(timer), "timerfd_create");
    // A timer of 0 would never fire.
    const auto wait = delay.count() > 0 ? std::chrono::nanoseconds(delay) : std::chrono::nanoseconds(1);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(wait);
    itimerspec setting{};
    setting.it_value.tv_sec = seconds.count();
    setting.it_value.tv_nsec = (wait - seconds).count();
    check(::timerfd_settime(timer.number(), 0, &setting, nullptr) == 0, "timerfd_settime");
    return timer;
}

} // namespace

EventLoop::Watch EventLoop::watch(int descriptor, Callback onReadable)
{
    return add({descriptor, std::move(onReadable), Descriptor()});
}

EventLoop::Watch EventLoop::after(std::chrono::milliseconds delay, Callback callback)
{
    auto timer = timerAfter(delay);
    const auto descriptor = timer.number();
    return add({descriptor, std::move(callback), std::move(timer)});
}

EventLoop::Watch EventLoop::add(Entry entry)
{
    Watch watch;
    watch.m_entry = std::make_shared<Entry>(std::move(entry));
    m_entries.push_back(watch.m_entry);
    return watch;
}

bool EventLoop::isOver(const std::weak_ptr<Entry>& entry)
{
    const auto held = entry.lock();
    return !held || held->descriptor < 0;
}

void EventLoop::run()
{
    m_isRunning = true;
    while (m_isRunning) {
        std::erase_if(m_entries, isOver);
        if (m_entries.empty())
            break;
        turn();
    }
    m_isRunning = false;
}

void EventLoop::turn()
{
    // A copy: callbacks register and drop watches.
    const auto entries = m_entries;
    std::vector<pollfd> descriptors;
    for (const auto& entry : entries) {
        const auto held = entry.lock();
        descriptors.push_back({held ? held->descriptor : -1, POLLIN, 0});
    }
    if (::poll(descriptors.data(), descriptors.size(), -1) < 0) {
        check(errno == EINTR, "poll");
        return;
    }
    for (std::size_t index = 0; index < entries.size() && m_isRunning; ++index) {
        if (descriptors[index].revents == 0)
            continue;
        // Held, because the callback may drop its own watch.
        if (const auto entry = entries[index].lock()) {
            if (entry->timer)
                entry->descriptor = -1; // once only, also if its watch is kept
            entry->callback();
        }
    }
}

} // namespace fieldbook
