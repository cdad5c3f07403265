#pragma once

/// @file
/// The clock that everything dated, delayed or timed reads.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

/// Tells the time of a world.
///
/// The platform's clock runs by itself. A clock that a test holds does not: its time changes only when the
/// test says so, and whoever waits for a moment must learn of the change. Therefore a waiter registers as an
/// observer and, while `runsByItself()` is false, sleeps until it is told, not until a deadline.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT Clock {
public:
    /// Is told after each change of a clock that does not run by itself, on the thread that changes it,
    /// without any lock held.
    class ORRENBY_EXPORT Observer {
    public:
        virtual ~Observer();

        /// The clock shows another time from now on.
        virtual void clockDidChange() = 0;
    };

    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock();

    /// The calendar's time. It may be set forward and back while the process runs.
    virtual Date now() const = 0;

    /// Seconds since some fixed moment. Never goes back; what delays and deadlines are measured with.
    virtual double monotonicSeconds() const = 0;

    /// Whether waiting for some seconds is enough to see them pass.
    virtual bool runsByItself() const { return true; }

    /// Adds an observer until it is released. A clock that runs by itself takes none.
    virtual void addObserver(std::weak_ptr<Observer> observer);

    /// The platform's clock.
    static std::shared_ptr<Clock> system();

protected:
    Clock() = default;
};

} // namespace orrenby
