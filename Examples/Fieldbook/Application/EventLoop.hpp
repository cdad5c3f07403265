#pragma once

/// @file
/// The main loop of the application.

#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include <chrono>
#include <memory>
#include <vector>

namespace fieldbook {

/// Lends the thread to its run loop as long as there is something to wait for, and hands out registrations
/// that end with their owner.
///
/// The library waits for nothing by itself: here is the one place where the application does. Timers, queues
/// and operations of the library run here too.
///
/// @snippet Examples/Fieldbook/Tests/Application/EventLoopTests.cpp Waiting for a moment
///
/// Not synchronised. It outlives the watches that it handed out.
class EventLoop {
    struct Entry;

public:
    using Callback = orrenby::UniqueFunction<void()>;

    /// A registration. Dropping it ends it, also inside its own callback. Movable, not copyable.
    class Watch {
    public:
        Watch() = default;
        Watch(Watch&&) = default;
        Watch& operator=(Watch&&) = default;

    private:
        friend class EventLoop;

        // The loop knows it weakly: what nobody holds is not called.
        std::shared_ptr<Entry> m_entry;
    };

    EventLoop() = default;
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    /// Calls `onReadable` in every turn in which the descriptor can be read. It stays the caller's and open.
    [[nodiscard]] Watch watch(int descriptor, Callback onReadable);

    /// Calls `callback` once, not before the next turn and not before `delay` has passed. What can be read by
    /// then is called for first.
    [[nodiscard]] Watch after(std::chrono::milliseconds delay, Callback callback);

    /// Turns until `stop()` is called, or until no watch is left to wait for. Within a turn, descriptors are
    /// called for in the order of their registration.
    void run();

    /// Calls what is due by now and what other threads have handed to the main queue, and waits for nothing.
    void drain();

    /// Lets `run()` return before it calls anything else. It can be run again.
    void stop();

private:
    Watch add(std::shared_ptr<Entry> entry);
    bool hasEntries();

    std::vector<std::weak_ptr<Entry>> m_entries;
    bool m_isRunning = false;
};

} // namespace fieldbook
