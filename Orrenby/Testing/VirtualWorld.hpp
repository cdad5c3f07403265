#pragma once

/// @file
/// A world that stands still until a test moves it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace orrenby::inline ORRENBY_ABI::testing {

/// What a test may choose about its world.
struct VirtualWorldOptions {
    /// When it begins: unless chosen otherwise, on 1 January 2030, 00:00 UTC.
    Date start = Date(1893456000);
    /// Which random numbers are drawn. The same seed makes for the same numbers.
    std::uint64_t seed = 0;
    /// Seconds of real time for which the test waits for its real threads, if it has any, before it fails
    /// because nothing that is pending could ever end a wait.
    double patience = 5;
    /// What texts for people follow, whatever the machine is set to.
    std::string locale = "en_US";
    /// The name of the zone of days and hours; one that does not exist throws `std::bad_optional_access`.
    std::string timeZone = "GMT";
};

/// Replaces the current world, while it lives, by one without threads, in which time passes only when the
/// test says so.
///
/// Dispatch queues, operation queues, run loops and timers do everything on the one thread that made the
/// world, in an order that is the same in each run. An hour takes microseconds:
///
/// @snippet Tests/Testing/VirtualWorldTests.cpp An hour of back-off
///
/// **Moments.** The clock jumps from one moment for which something is due to the next, and each time shows
/// exactly what that was due for. At one moment there run, in this order and over and over until nothing is
/// left:
/// 1. what is ready in queues, in the order in which it was handed over; delayed work that falls due becomes
///    ready by its own moment, and that of one moment in the order of the calls;
/// 2. a turn of the run loop in the default mode, as described in `RunLoop.hpp`: what was handed over to the
///    main queue and the loop, then timers, then watches.
///
/// **Waiting.** Code that blocks, on an operation or by `sync`, runs what is ready meanwhile, and moves the
/// clock as well, as far as it has to. The run loop is not turned for code that blocks it. What nothing could
/// ever end is a fatal error instead of a test that hangs.
///
/// **Chance and names.** Random numbers follow from the seed. UUIDs are counted:
/// `00000000-0000-4000-8000-000000000001` is the first.
///
/// **Place.** English as in the United States, in GMT, unless chosen otherwise: the same texts and days on
/// every machine. The shared formatters of dates are the world's own, made anew.
///
/// **Its end.** What is still pending in queues and in the thread's run loop is dropped, not run: the test's
/// own variables may be gone already. Timers of the loop become invalid.
///
/// Real threads may hand over work; it runs on the world's thread. Not synchronised otherwise: all other
/// calls come from that thread.
class ORRENBY_EXPORT VirtualWorld {
public:
    /// The rest, such as the main bundle, is taken from the current world.
    explicit VirtualWorld(VirtualWorldOptions options = {});
    VirtualWorld(const VirtualWorld&) = delete;
    VirtualWorld& operator=(const VirtualWorld&) = delete;
    ~VirtualWorld();

    /// What the world's clock shows.
    Date now() const;

    /// Seconds since the beginning, which are the clock's monotonic ones too. In whole nanoseconds when they
    /// come from the calls below.
    double elapsed() const;

    /// Runs everything that is ready or falls due in the next `seconds`, and leaves the clock there. 0, less
    /// or no number is `runUntilIdle()`.
    void advance(double seconds);

    /// The same until `date`.
    void advanceTo(Date date);

    /// Runs everything that is ready or due now, and what that hands over. Leaves the clock as it is, unless
    /// something blocks until a later moment.
    void runUntilIdle();

    /// Runs until nothing is pending, wherever that takes the clock.
    ///
    /// @param limit  Jumps of the clock after which a `std::runtime_error` is thrown: something is pending
    /// for ever, such as a repeating timer.
    void runAll(std::size_t limit = 100'000);

    /// Jobs of queues, and delayed work, that have not begun.
    std::size_t pendingCount() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace orrenby::testing
