#pragma once

/// @file
/// The executor of a test's world. Not in the umbrella header: part of VirtualWorld.cpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include "Orrenby/Testing/VirtualClock.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

/// Runs jobs on the thread that made it, while that thread waits, and moves the clock when there is nothing
/// else to do.
///
/// Jobs may come from any thread.
class VirtualExecutor final : public Executor {
public:
    VirtualExecutor(std::shared_ptr<VirtualClock> clock, double patience);
    /// Nothing may be pending.
    ~VirtualExecutor() override;

    void execute(Job& job) override;
    void executeAt(double deadline, Job& job) override;
    void wait(Waiter& waiter, double deadline) override;

    /// Runs jobs and the thread's run loop until nothing is due up to `limit`, moving the clock as far as
    /// needed.
    /// @returns Whether it came to that with so many jumps of the clock at most.
    bool drive(double limit, std::size_t jumps);

    /// Discards everything that is pending, and what is handed over by that.
    void discardAll() noexcept;

    std::size_t pendingCount() const;

private:
    struct Delayed {
        double deadline;
        std::uint64_t number;
        Job* job;
    };
    struct Later {
        bool operator()(const Delayed& a, const Delayed& b) const noexcept
        {
            return a.deadline != b.deadline ? a.deadline > b.deadline : a.number > b.number;
        }
    };
    bool runOne() noexcept;
    Job* takeReady() noexcept;
    void appendLocked(Job& job) noexcept;
    double earliestDeadline() const;
    /// Counts against work that hands over work for ever.
    void countCall() noexcept;

    const std::shared_ptr<VirtualClock> m_clock;
    const double m_patience;
    const std::thread::id m_thread = std::this_thread::get_id();
    int m_mainBlocks = 0; ///< Calls of `wait` that block the main thread, instead of letting its loop wait.
    std::size_t m_callsAtThisMoment = 0;

    mutable std::mutex m_mutex; ///< Guards what follows.
    Job* m_first = nullptr;
    Job* m_last = nullptr;
    std::size_t m_readyCount = 0;
    std::vector<Delayed> m_delayed; ///< A heap, the earliest first.
    std::uint64_t m_number = 0;
};

} // namespace orrenby::testing
