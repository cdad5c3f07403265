#pragma once

/// @file
/// A lock that many readers, or one writer, can hold.

#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <pthread.h>

namespace orrenby::inline ORRENBY_ABI {

/// Lets readers run side by side and a writer alone. It does not hold what it guards; `Synchronized` does.
///
/// Not re-entrant: what a body does that uses the same lock is undefined. A body that throws gives the lock
/// back, and its error passes through. With the platform's default, readers may pass a writer that waits, so
/// a writer can starve while reads overlap without a gap.
///
/// @snippet Tests/Utilities/ReadersWriterLockTests.cpp Reading and writing
///
/// It pays off over `MutexLock` only where bodies are longer than taking the lock. No allocation of its own.
/// It is the purpose of this class to call a body while it holds the lock. Safe to use from several threads.
class ReadersWriterLock {
public:
    ReadersWriterLock() noexcept { pthread_rwlock_init(&m_rwlock, nullptr); }
    ReadersWriterLock(const ReadersWriterLock&) = delete;
    ReadersWriterLock& operator=(const ReadersWriterLock&) = delete;
    ~ReadersWriterLock() { pthread_rwlock_destroy(&m_rwlock); }

    /// Runs `body` while no writer runs, and gives what it gives.
    template <std::invocable Body> decltype(auto) read(Body&& body)
    {
        pthread_rwlock_rdlock(&m_rwlock);
        const auto release = Release(m_rwlock);
        return static_cast<Body&&>(body)();
    }

    /// Runs `body` while nobody else runs, and gives what it gives.
    template <std::invocable Body> decltype(auto) write(Body&& body)
    {
        pthread_rwlock_wrlock(&m_rwlock);
        const auto release = Release(m_rwlock);
        return static_cast<Body&&>(body)();
    }

private:
    class Release {
    public:
        explicit Release(pthread_rwlock_t& held) noexcept
            : m_held(held)
        {}
        Release(const Release&) = delete;
        Release& operator=(const Release&) = delete;
        ~Release() { pthread_rwlock_unlock(&m_held); }

    private:
        pthread_rwlock_t& m_held;
    };

    pthread_rwlock_t m_rwlock{};
};

} // namespace orrenby
