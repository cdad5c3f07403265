#pragma once

/// @file
/// What a run loop consists of. Not in the umbrella header: part of RunLoop.cpp, Timer.cpp and
/// DescriptorWatch.cpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/DescriptorWatch.hpp"
#include "Orrenby/Platform/Scheduling/LoopAlarm.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include <atomic>
#include <compare>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// One mode of one loop. Its address stays.
struct RunLoopModeState {
    struct TimerPlace {
        double deadline; ///< Monotonic seconds.
        std::uint64_t sequence;
        friend auto operator<=>(const TimerPlace&, const TimerPlace&) = default;
    };
    struct TimerEntry {
        Ref<Timer> timer;
        double tolerance;
    };
    struct Block {
        std::uint64_t number;
        std::uint64_t jobsBefore; ///< How many jobs had been handed over before it.
        UniqueFunction<void()> function;
    };

    std::string name;
    bool isCommon = false;
    /// Without those that are firing.
    std::map<TimerPlace, TimerEntry> timers;
    /// Timers that another thread fires at the moment. They come back.
    int timersAway = 0;
    /// Those for this mode alone; blocks for the common modes stand among the jobs.
    std::deque<Block> blocks;
};

struct DescriptorEntry {
    int descriptor;
    UniqueFunction<void()> onReadable;
    std::vector<RunLoopModeState*> modes;
    bool isActive = true;
    bool isBeingCalled = false;
};

/// Everything of it may be called on any thread, but for `run`.
class RunLoopCore : public std::enable_shared_from_this<RunLoopCore> {
public:
    using Mode = RunLoopModeState;

    enum class Until { OneCall, TheEnd };

    explicit RunLoopCore(bool isMain);
    RunLoopCore(const RunLoopCore&) = delete;
    RunLoopCore& operator=(const RunLoopCore&) = delete;

    bool isCurrent() const noexcept;

    void execute(Job& job);
    void perform(UniqueFunction<void()> block, std::string_view mode);
    DescriptorWatch watch(int descriptor, std::string_view mode, UniqueFunction<void()> onReadable);
    void unwatch(DescriptorEntry& entry);
    bool isActive(const DescriptorEntry& entry) const;

    /// @param until  Monotonic seconds.
    bool run(std::string_view mode, double until, Until end);
    void stop();
    std::optional<std::string> currentMode() const;
    std::optional<Date> nextFireDate(std::string_view mode) const;

    /// For `Timer`, which holds its own lock meanwhile and the last reference to itself never here.
    std::vector<Mode*> modesNamed(std::string_view mode);
    std::uint64_t nextSequence();
    bool insert(const Ref<Timer>& timer);
    void remove(const Timer& timer);
    void move(const Ref<Timer>& timer, double from);
    void markAway(std::span<Mode* const> modes, int change);

    /// The thread ends.
    void close();

    /// See `RunLoop`.
    bool turn(std::string_view mode);
    double latestMoment(std::string_view mode);
    void discardAll();

private:
    struct Frame;
    class TurnWaiter;
    class PerformedBlock;

    Mode& modeNamed(std::string_view mode);
    std::vector<Mode*> modesNamedLocked(std::string_view mode);
    void append(Job& job) noexcept;
    void insertLocked(const Ref<Timer>& timer);
    void removeLocked(const Timer& timer, double deadline);
    void ringForTimers() noexcept;

    bool hasSomethingToWaitFor(const Mode& mode) const;
    bool turn(Frame& frame);
    void leave(const Frame& frame);
    double latestMomentLocked(const Mode& mode) const;
    bool callHandedOver(Frame& frame);
    std::vector<Ref<Timer>> timersDue(Mode& mode, double now);
    bool callWatches(Frame& frame);
    void wait(Mode& mode, double until);
    std::vector<std::shared_ptr<DescriptorEntry>> watchesIn(Mode& mode) const;

    const bool m_isMain;
    const std::thread::id m_thread;
    LoopAlarm m_alarm;
    bool m_isWaiting = false; ///< For the loop's thread alone.

    mutable std::mutex m_mutex;
    std::map<std::string, Mode, std::less<>> m_modes;
    std::vector<std::shared_ptr<DescriptorEntry>> m_watches; ///< In the order of registration.
    Job* m_firstJob = nullptr;
    Job* m_lastJob = nullptr;
    std::uint64_t m_jobsHandedOver = 0;
    std::uint64_t m_jobsTaken = 0;
    std::uint64_t m_blocksHandedOver = 0;
    std::uint64_t m_lastSequence = 0;
    Frame* m_frame = nullptr; ///< Of the innermost run.
    bool m_isClosed = false;
};

} // namespace orrenby::detail
