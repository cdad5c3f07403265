#pragma once

/// @file
/// What wakes a run loop. Not in the umbrella header: part of RunLoop.cpp.

#include "Orrenby/Platform/Export.hpp"
#include <atomic>
#include <poll.h>
#include <span>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Lets a thread sleep until a descriptor can be read, a time has passed, or somebody rings.
///
/// Ringing costs a system call only when the thread sleeps. One thread sleeps and resets; everybody may ring.
class LoopAlarm {
public:
    LoopAlarm();
    LoopAlarm(const LoopAlarm&) = delete;
    LoopAlarm& operator=(const LoopAlarm&) = delete;
    ~LoopAlarm();

    void ring() noexcept;
    bool hasRung() const noexcept { return m_state.load() == State::Rung; }

    /// To be called before looking at what the ringers changed.
    void reset() noexcept { m_state.store(State::Awake); }

    /// What stands for the alarm itself as the first of `descriptors` below.
    pollfd descriptor() const noexcept { return {m_descriptor, POLLIN, 0}; }

    /// Returns at once when it has rung since it was reset.
    ///
    /// @param seconds  May be infinite.
    void sleep(std::span<pollfd> descriptors, double seconds) noexcept;

private:
    enum class State { Awake, Asleep, Rung };

    std::atomic<State> m_state = State::Awake;
    const int m_descriptor;
};

/// Marks those of `descriptors` that can be read now, and gives their number.
int markReadable(std::span<pollfd> descriptors) noexcept;

} // namespace orrenby::detail
