#pragma once

/// @file
/// The executor that has threads. Not in the umbrella header: `Executor::system()` hands it out.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Runs jobs on threads of its own, as many at once as the machine has processors, two at least.
///
/// Threads are started one by one as jobs find none free, are detached, and wait for ever once there is
/// nothing to do: nobody joins them when the process ends, and the executor must not be destroyed once the
/// first one runs. A thread that blocks in `wait` counts as absent, and another one takes its place, so that
/// jobs that wait for jobs cannot starve the rest; `spareLimit` bounds how many.
///
/// Deadlines are moments of the platform's own clock. The thread that waits for the earliest is one of those
/// that are free.
class SystemExecutor final : public Executor {
public:
    static constexpr std::size_t spareLimit = 64;

    SystemExecutor();

    void execute(Job& job) override;
    void executeAt(double deadline, Job& job) override;
    void wait(Waiter& waiter, double deadline) override;

private:
    struct Delayed {
        double deadline;
        std::uint64_t number; ///< Keeps the order of equal deadlines.
        Job* job;
    };
    /// For a heap whose first is the earliest.
    struct Later {
        bool operator()(const Delayed& a, const Delayed& b) const noexcept
        {
            return a.deadline != b.deadline ? a.deadline > b.deadline : a.number > b.number;
        }
    };

    void serve() noexcept;
    void append(Job& job) noexcept;
    void appendDue() noexcept;
    void runFirst(std::unique_lock<std::mutex>& lock) noexcept;
    void sleep(std::unique_lock<std::mutex>& lock) noexcept;
    /// Sees to it that a thread comes to look, if there is something for it to do. One at a time is called:
    /// it calls the next when it has found work.
    void callThread() noexcept;
    /// The same, but leaves it to the caller to notify, which is better done without the lock: who wakes
    /// would run into it.
    [[nodiscard]] std::condition_variable* threadToCall() noexcept;
    static void notify(std::condition_variable* called) noexcept;
    bool mayBegin() const noexcept { return m_first != nullptr && m_running < m_width; }
    bool lacksTimekeeper() const noexcept
    {
        return !m_delayed.empty() && !m_hasTimekeeper && m_running < m_width;
    }

    const std::size_t m_width; ///< Threads that may run jobs at the same time.
    std::mutex m_mutex;
    std::condition_variable m_work; ///< Where free threads sleep, but for the timekeeper.
    std::condition_variable m_time; ///< Where the timekeeper sleeps, until the earliest deadline at most.
    Job* m_first = nullptr;
    Job* m_last = nullptr;
    std::vector<Delayed> m_delayed;
    std::uint64_t m_number = 0;
    std::size_t m_total = 0;
    std::size_t m_running = 0; ///< Threads inside a job that do not wait there.
    std::size_t m_asleep = 0;  ///< Threads at `m_work`.
    bool m_hasTimekeeper = false;
    bool m_isOneComing = false; ///< A thread was called and has not looked yet.
};

} // namespace orrenby::detail
