#pragma once

/// @file
/// Timers: callables that a run loop calls at a moment, or again and again.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/PlainMutex.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

class RunLoopCore;
struct RunLoopModeState;

} // namespace detail

class Timer;

/// What a timer may be given besides its block.
struct TimerOptions {
    /// See `Timer::setTolerance`.
    double tolerance = 0;
    /// See `Timer::userInfo`.
    Any userInfo = {};
};

/// Calls its block at a moment, once or repeatedly, on the thread of the run loop it was added to.
///
/// @snippet Tests/Platform/Scheduling/TimerTests.cpp Scheduling a timer
///
/// The loop owns a timer until the timer is invalid, which a non-repeating one is once it has fired. So
/// nobody need keep the reference, except to invalidate it. While it is invalid nothing of it works any more
/// and nothing is kept: block and user info are released.
///
/// Intervals are measured by the clock that never goes back. A repeating timer keeps to its rhythm: the
/// moments are the first fire date plus multiples of the interval, however late each call was. When the loop
/// was busy for several intervals the timer fires once, and next at the first such moment after its block
/// returned.
///
/// A timer does not fire inside its own block, also not by `fire()` or in a nested run of the loop.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT Timer : public std::enable_shared_from_this<Timer> {
    struct Key {
        explicit Key() = default;
    };

public:
    /// Called with the timer, on the thread whose loop has it.
    using Block = UniqueFunction<void(Timer&)>;

    /// Made by the functions below.
    Timer(Key, double seconds, bool repeats, TimerOptions options, Block block);
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer();

    /// A timer that is to be added to a run loop; it then fires first, or only, `seconds` after now.
    ///
    /// @param seconds  0, negative ones and what is no number count as 0.0001. Infinite ones never pass: such
    /// a timer waits for `setFireDate`.
    static Ref<Timer> timerWithTimeInterval(double seconds, bool repeats, Block block);
    static Ref<Timer> timerWithTimeInterval(double seconds, bool repeats, TimerOptions options, Block block);

    /// The same, added to the current run loop in its default mode.
    static Ref<Timer> scheduledTimerWithTimeInterval(double seconds, bool repeats, TimerOptions options,
        Block block, TraceSite site = TraceSite::current());
    // A template, so that options in braces are never tried as a block.

    /// The same with the usual options.
    template <class F>
        requires std::is_constructible_v<Block, F>
    static Ref<Timer> scheduledTimerWithTimeInterval(
        double seconds, bool repeats, F&& block, TraceSite site = TraceSite::current())
    {
        return scheduledTimerWithTimeInterval(
            seconds, repeats, TimerOptions(), Block(std::forward<F>(block)), site);
    }

    /// Calls the block now, on the calling thread, whether or not a loop has the timer. The rhythm of a
    /// repeating one stays as it is; a non-repeating one is invalid afterwards. Nothing happens while the
    /// block runs.
    void fire();

    /// Ends the timer for good; no call begins after it. On another thread than the loop's, it does not wait
    /// for one that is going on.
    void invalidate();

    /// A non-repeating timer is still valid while its block runs.
    bool isValid() const;

    /// When it fires next, in the calendar that held when this was determined: setting the calendar
    /// forward or back changes neither. While its block runs, still the moment for which it fires; once it is
    /// invalid, what it was last.
    Date fireDate() const;

    /// Moves the next moment, which the rhythm then counts from. One that has passed (or is none) is due at
    /// once.
    void setFireDate(Date date);

    /// Seconds between two moments of a repeating timer; 0 for one that does not repeat.
    double timeInterval() const noexcept;

    /// Seconds by which it may fire later than it should, so that a loop wakes once for several timers.
    double tolerance() const;

    /// Negative ones and what is no number count as 0; of a repeating timer no more than its interval counts.
    /// With an infinite one it fires whenever the loop is awake anyway.
    void setTolerance(double seconds);

    /// What it was made with, for whoever fires. Null once the timer is invalid.
    Any userInfo() const;

private:
    friend class RunLoop;
    friend class detail::RunLoopCore;

    void add(const std::shared_ptr<detail::RunLoopCore>& loop, std::string_view mode);
    void fireIfDue(const detail::RunLoopModeState& mode, double now);
    void beginFiring();
    void callBlock() noexcept;
    void finishFiring(bool isOnSchedule);
    /// To the first moment after `now`.
    void moveOn(double now);
    template <class F> void change(F&& assign);

    const double m_interval;
    const bool m_repeats;

    /// Taken before that of the loop.
    mutable detail::PlainMutex m_mutex;
    Block m_block;
    Any m_userInfo;
    double m_tolerance = 0;
    std::weak_ptr<detail::RunLoopCore> m_loop;
    std::vector<detail::RunLoopModeState*> m_modes;
    std::uint64_t m_sequence = 0; ///< Of its addition to the loop.
    /// The moments are `m_anchor` plus multiples of the interval.
    double m_anchor;
    Date m_anchorDate;
    double m_multiple = 1;
    double m_deadline;
    Date m_fireDate;
    bool m_isValid = true;
    bool m_isFiring = false;
    /// While it fires on another thread than the loop's: in how many of its modes the loop knows that it will
    /// come back.
    std::size_t m_modesAway = 0;
    bool m_wasMoved = false; ///< By `setFireDate`, while it was firing.
};

} // namespace orrenby
