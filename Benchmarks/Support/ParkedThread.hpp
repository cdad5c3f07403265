#pragma once

/// @file
/// A second thread that does nothing, so that atomic operations cost what they cost in an application.

#include <condition_variable>
#include <mutex>
#include <thread>

namespace orrenby::benchmarks {

/// Lives for the whole run. Without it a single-threaded process would skip lock prefixes and flatter
/// everyone.
class ParkedThread {
public:
    ParkedThread()
        : m_thread([this] {
            auto lock = std::unique_lock(m_mutex);
            m_end.wait(lock, [this] { return m_isOver; });
        })
    {}

    ParkedThread(const ParkedThread&) = delete;
    ParkedThread& operator=(const ParkedThread&) = delete;

    ~ParkedThread()
    {
        {
            const auto lock = std::lock_guard(m_mutex);
            m_isOver = true;
        }
        m_end.notify_one();
        m_thread.join();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_end;
    bool m_isOver = false;
    std::thread m_thread;
};

inline const ParkedThread parkedThread;

} // namespace orrenby::benchmarks
