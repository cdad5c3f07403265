#pragma once

/// @file
/// The loop in which a thread waits, and does what others ask of it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/TestAccess.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/DescriptorWatch.hpp"
#include "Orrenby/Platform/Scheduling/RunLoopMode.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

class Job;
class Timer;

/// Fires timers, runs what was handed over, and calls whoever watches a file descriptor that can be read.
///
/// Each thread has one, made when it is first asked for. It does nothing by itself: the thread lends itself
/// to it by calling `run`, once or for good. All waiting goes through the executor of the current world, so
/// in a test's world the loop runs the jobs of queues meanwhile, and the clock jumps to the next timer.
///
/// @snippet Tests/Platform/Scheduling/RunLoopTests.cpp Running a loop
///
/// **Modes.** Timers, blocks and watches belong to modes, jobs to all common ones; the loop runs in one mode
/// at a time and leaves what is not in it alone. See `RunLoopMode.hpp`.
///
/// **A turn** has three parts, in this order:
/// 1. jobs and blocks that had been handed over when it began, in that order;
/// 2. timers that were due when it began, by fire date, then in the order in which they were added;
/// 3. watches whose descriptor can be read now, in the order of their registration.
///
/// What these calls add is left to the next turn. What they end is not called any more.
///
/// **Nesting.** Each of these calls may run the loop again, in the same mode or another one. The nested run
/// does not call again what is being called further out: neither the timer that fires nor the watch.
///
/// Callbacks do not throw: a throw ends the process.
///
/// The loop of a thread ends with it: its timers become invalid, its blocks are dropped, and jobs that are
/// left run then. The main thread's loop does not end. Only the running itself is bound to the loop's thread
/// (elsewhere it is a programming error); everything else is safe to use from several threads, and wakes the
/// loop. Not for a forked child that goes on without `exec`.
class ORRENBY_EXPORT RunLoop {
public:
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;

    /// That of the calling thread. Ends the process when destructors of the thread's own variables ask for it
    /// after it has ended.
    static RunLoop& current();

    /// That of the main thread, for every thread.
    static RunLoop& main();

    /// Whether the calling thread is the one whose loop this is.
    bool isCurrent() const noexcept;

    /// Runs `job` on the loop's thread, in the common modes. Allocates nothing. The owner keeps the job alive
    /// until it has run.
    void execute(Job& job);

    /// Calls `block` once on the loop's thread. An empty one is ignored. It stays in line together with jobs;
    /// one allocation.
    void perform(UniqueFunction<void()> block, std::string_view mode = NSRunLoopCommonModes,
        TraceSite site = TraceSite::current());

    /// Fires `timer` on the loop's thread from now on, and keeps it alive until it is invalid.
    ///
    /// A timer may be added in several modes, but to one loop only: that of another loop is left there.
    /// Adding it again in the same mode, an invalid one, or an empty reference changes nothing. O(log n).
    void addTimer(const Ref<Timer>& timer, std::string_view mode, TraceSite site = TraceSite::current());

    /// Calls `onReadable` in every turn in which reading from `descriptor` would not block: data has come,
    /// the other end is closed, or the descriptor has failed or was never open.
    ///
    /// Nothing is read here; what stays unread makes for a call in the next turn too. The descriptor stays
    /// the caller's and must be open as long as it is watched; a negative one is never called for.
    [[nodiscard]] DescriptorWatch watch(int descriptor, std::string_view mode,
        UniqueFunction<void()> onReadable, TraceSite site = TraceSite::current());

    /// Turns until a job, a block or a watch was called, or `until` has come, or `stop()` is called, or
    /// nothing is left to wait for in `mode`.
    ///
    /// Timers fire meanwhile, but do not end it. With a moment that has passed (or is none) it makes one turn
    /// without waiting.
    ///
    /// @returns Whether it ran. It does not when there was nothing to wait for from the beginning: nothing
    /// handed over, no timer, no watch. The common modes of the main loop always have something to wait for,
    /// as anybody may hand work over to them.
    bool run(std::string_view mode, Date until);

    /// Turns in the default mode until `until` has come, `stop()` is called, or nothing is left to wait for.
    void runUntil(Date until);

    /// The same for `seconds`, which are exact where a `Date` would be rounded. May be infinite; negative
    /// ones and what is no number count as 0: one turn without waiting.
    void runFor(double seconds);

    /// Turns in the default mode until `stop()` is called or nothing is left to wait for.
    void run();

    /// Lets the innermost run that is going on return before anything else is called. Without one nothing
    /// happens, also not to the next.
    void stop();

    /// The mode of the innermost run that is going on, or nothing.
    std::optional<std::string> currentMode() const;

    /// When the next timer of `mode` is due; nothing without one. A timer that is firing has no next one yet.
    std::optional<Date> nextFireDate(std::string_view mode) const;

private:
    friend class Timer;
    friend struct testing::TestAccess;

    /// These are for a world that a test drives. One turn without waiting.
    /// @returns Whether anything was called, timers included.
    bool turn(std::string_view mode);
    /// How long the loop would wait for timers, in monotonic seconds; infinite without one.
    double latestMoment(std::string_view mode) const;
    /// Drops what was handed over, and invalidates all timers.
    void discardAll();

    explicit RunLoop(bool isMain);
    ~RunLoop();

    void requireOwnThread() const;

    std::shared_ptr<detail::RunLoopCore> m_core;
};

} // namespace orrenby
