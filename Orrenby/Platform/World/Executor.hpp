#pragma once

/// @file
/// Where work runs that is not run at once, and how a thread waits.

#include "Orrenby/Platform/Export.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

/// A piece of work that its owner hands to an executor, and may hand over again once it runs.
///
/// It lives where its owner puts it, so handing it over allocates nothing. The owner keeps it alive until it
/// has run; an executor does not touch it once `run()` was called.
///
/// Not synchronised: from the handing over until `run()` or `discard()` only whoever holds it touches it,
/// otherwise only its owner does.
class ORRENBY_EXPORT Job {
public:
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    /// Does the work. A throw ends the process.
    virtual void run() noexcept = 0;

    /// Takes the place of `run()` when the executor goes away with the job still in its hands, as that of a
    /// test does: the owner lets go of what it keeps for the work, without doing it.
    virtual void discard() noexcept;

    /// For the list of whoever holds the job at the moment.
    Job* next = nullptr;
    /// For whoever holds the job until a moment: monotonic seconds.
    double deadline = 0;

protected:
    Job() = default;
    ~Job() = default;
};

/// What a thread blocks on. Implemented by whoever has something to wait for.
///
/// Not synchronised: only the thread that waits makes these calls. How other threads signal is up to whoever
/// implements it.
class ORRENBY_EXPORT Waiter {
public:
    /// Whether what is waited for has come.
    virtual bool isSignalled() const noexcept = 0;

    /// Blocks the calling thread until signalled or for `seconds`, which may be infinite. May return early.
    virtual void block(double seconds) noexcept = 0;

    /// Whether the thread is not blocked, but does what comes up meanwhile and waits only for that: a run
    /// loop.
    virtual bool isLoop() const noexcept { return false; }

protected:
    Waiter() = default;
    ~Waiter() = default;
};

/// Runs the jobs of queues and lets threads wait for them.
///
/// The platform's executor has threads of its own, started when the first job comes. That of a test has none:
/// it runs jobs on the thread that waits, one at a time, and moves the test's clock to the next deadline when
/// there is nothing else to do. So everybody who waits has to wait through `wait`.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT Executor {
public:
    Executor(const Executor&) = delete;
    Executor& operator=(const Executor&) = delete;
    virtual ~Executor();

    /// Runs `job` soon, on a thread of the executor. Jobs begin in the order in which they are handed over.
    virtual void execute(Job& job) = 0;

    /// Runs `job` once the world's clock has reached `deadline`, in monotonic seconds. Jobs of one deadline
    /// begin in the order in which they are handed over.
    virtual void executeAt(double deadline, Job& job) = 0;

    /// Returns when `waiter` is signalled or the clock has reached `deadline`, in monotonic seconds, which
    /// may be infinite. May return early, so callers loop. Other jobs may run on this thread meanwhile.
    virtual void wait(Waiter& waiter, double deadline) = 0;

    /// The platform's executor. It never goes away, and goes by the platform's own clock: a world with
    /// another clock needs another executor.
    static std::shared_ptr<Executor> system();

protected:
    Executor() = default;
};

} // namespace orrenby
