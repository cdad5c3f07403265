#pragma once

/// @file
/// The main loop of the application.

#include "Descriptor.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include <chrono>
#include <memory>
#include <vector>

namespace fieldbook {

/// Waits until one of its descriptors can be read, and calls whoever asked for it.
///
/// The library starts no thread and waits for nothing: here is the one place where the application does.
///
/// @snippet Examples/Fieldbook/Tests/EventLoopTests.cpp Waiting for a moment
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

    /// Calls `callback` once, not before the next turn and not before `delay` has passed.
    [[nodiscard]] Watch after(std::chrono::milliseconds delay, Callback callback);

    /// Turns until `stop()` is called, or until nothing is left to wait for. Within a turn, callbacks run in
    /// the order of their registration.
    void run();

    /// Lets `run()` return before it calls anything else. It can be run again.
    void stop() { m_isRunning = false; }

private:
    static bool isOver(const std::weak_ptr<Entry>& entry);
    Watch add(Entry entry);
    void turn();

    std::vector<std::weak_ptr<Entry>> m_entries;
    bool m_isRunning = false;
};

} // namespace fieldbook
