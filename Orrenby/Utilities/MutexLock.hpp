#pragma once

/// @file
/// A lock that one thread at a time can hold.

#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <pthread.h>

namespace orrenby::inline ORRENBY_ABI {

/// Runs callables one at a time. It does not hold what it guards; `Synchronized` does.
///
/// Not re-entrant: a body that uses the same lock waits for itself for ever. A body that throws gives the
/// lock back, and its error passes through.
///
/// @snippet Tests/Utilities/MutexLockTests.cpp Guarding two values together
///
/// The platform's default mutex with no allocation of its own. It is the purpose of this class to call a body
/// while it holds the lock. Safe to use from several threads.
class MutexLock {
public:
    MutexLock() noexcept { pthread_mutex_init(&m_mutex, nullptr); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;
    ~MutexLock() { pthread_mutex_destroy(&m_mutex); }

    /// Runs `body` and gives what it gives.
    template <std::invocable Body> decltype(auto) lock(Body&& body)
    {
        const auto guard = Guard(m_mutex);
        return static_cast<Body&&>(body)();
    }

    /// As `lock`: this lock does not tell readers from writers.
    template <std::invocable Body> decltype(auto) read(Body&& body)
    {
        return lock(static_cast<Body&&>(body));
    }

    /// As `lock`.
    template <std::invocable Body> decltype(auto) write(Body&& body)
    {
        return lock(static_cast<Body&&>(body));
    }

private:
    class Guard {
    public:
        explicit Guard(pthread_mutex_t& mutex) noexcept
            : m_held(mutex)
        {
            pthread_mutex_lock(&m_held);
        }
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;
        ~Guard() { pthread_mutex_unlock(&m_held); }

    private:
        pthread_mutex_t& m_held;
    };

    pthread_mutex_t m_mutex{};
};

} // namespace orrenby
