#pragma once

/// @file
/// The platform's mutex and nothing else. Not in the umbrella header: for members of public classes, whose
/// users would pay for all of `<mutex>`, clocks included.

#include "Orrenby/Platform/Export.hpp"
#include <pthread.h>

namespace orrenby::inline ORRENBY_ABI::detail {

/// One thread at a time. A thread that holds it and locks it again waits for ever.
///
/// For `Guard` in headers and for `std::lock_guard` and its like in sources. A condition variable of the
/// standard library takes a `std::mutex` only.
///
/// Allocates nothing. Safe to use from several threads.
class PlainMutex {
public:
    PlainMutex() = default;
    PlainMutex(const PlainMutex&) = delete;
    PlainMutex& operator=(const PlainMutex&) = delete;
    ~PlainMutex() { pthread_mutex_destroy(&m_mutex); }

    void lock() noexcept { pthread_mutex_lock(&m_mutex); }
    void unlock() noexcept { pthread_mutex_unlock(&m_mutex); }

    /// Holds the mutex until the end of its scope.
    class Guard {
    public:
        explicit Guard(PlainMutex& mutex) noexcept
            : m_held(mutex)
        {
            m_held.lock();
        }
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;
        ~Guard() { m_held.unlock(); }

    private:
        PlainMutex& m_held;
    };

private:
    pthread_mutex_t m_mutex = PTHREAD_MUTEX_INITIALIZER;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
