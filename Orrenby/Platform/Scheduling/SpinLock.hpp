#pragma once

/// @file
/// A lock for a few instructions. Not in the umbrella header: part of the queues' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Scheduling/Backoff.hpp"
#include <atomic>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Never held while anybody else's code runs. For `std::lock_guard` and its like.
class SpinLock {
public:
    void lock() noexcept
    {
        auto backoff = Backoff();
        while (m_isLocked.load(std::memory_order_relaxed)
            || m_isLocked.exchange(true, std::memory_order_acquire))
            backoff.pause();
    }

    void unlock() noexcept { m_isLocked.store(false, std::memory_order_release); }

private:
    std::atomic<bool> m_isLocked = false;
};

} // namespace orrenby::detail
