#pragma once

/// @file
/// One event that one thread waits for. Not in the umbrella header: for the library's own queues.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include <condition_variable>
#include <mutex>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Comes once. It may stand on the stack of the thread that waits: `set()` is done with it before `wait()`
/// returns.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT Signal final : public Waiter {
public:
    Signal() = default;

    void set() noexcept;

    /// Waits through the executor of the current world.
    void wait() noexcept;

    bool isSignalled() const noexcept override;
    void block(double seconds) noexcept override;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_change;
    bool m_isSet = false;
};

} // namespace orrenby::detail
