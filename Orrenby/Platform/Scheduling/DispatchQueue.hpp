#pragma once

/// @file
/// Queues of work: in order, side by side, or on the main thread.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/QueueTurn.hpp"
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Takes pieces of work and runs them in the order in which they were given to it.
///
/// - A *serial* queue runs one at a time, on any thread: what is touched on one serial queue only needs no
///   lock.
/// - A *concurrent* queue begins them in order and lets several run at once, as many as the executor of the
///   world has threads.
/// - The *main* queue is serial and runs them on the main thread, while its run loop runs in one of the
/// common
///   modes.
///
/// @snippet Tests/Platform/Scheduling/DispatchQueueTests.cpp Handing work to a queue
///
/// Work that was handed over cannot be taken back. It must not throw: a throw ends the process, except out of
/// `sync` and `barrierSync`, which hand it to their caller. Work may hand over more work, to its own queue as
/// well, which then comes after what waits already.
///
/// The threads belong to the world's executor (`World::executor`), a queue has none of its own. After 256
/// pieces of work it gives its thread back and stands in line again, so a busy queue keeps no other waiting.
/// Under a world held by a test everything runs on the one thread that drives the test.
///
/// Handing over costs about as much as a lock, and does not allocate when the closure has up to four words
/// and the queue has had as much waiting before. A handle: copies are the same queue. The queue goes away
/// when all its work is done and no handle is left, which may be while its own last work runs. Safe to use
/// from several threads.
class ORRENBY_EXPORT DispatchQueue {
public:
    /// One piece of work after the other, several at a time, or one after the other on the main thread.
    enum class Kind { Serial, Concurrent, Main };

    /// A new queue. The label names it in reports and need not be unique.
    static DispatchQueue serial(std::string label);
    /// A new queue. The label names it in reports and need not be unique.
    static DispatchQueue concurrent(std::string label);

    /// The queue of the main thread. There is one.
    static DispatchQueue main();

    /// The concurrent queue that everybody shares.
    static DispatchQueue global();

    /// Runs `work` after what was handed over before. Returns at once.
    void async(UniqueFunction<void()> work, TraceSite site = TraceSite::current()) const;

    /// Runs `work` when its turn has come, on the calling thread, and returns its result or lets its
    /// exception pass. An idle queue runs it at once, for the price of a lock. On the main queue it runs on
    /// the main thread.
    ///
    /// A caller that is on the same serial or main queue already would wait for itself: a programming error.
    /// On a concurrent queue such a caller goes on at once.
    template <class F> std::invoke_result_t<F> sync(F&& work) const
    {
        return detail::runInTurn(m_core, detail::QueueTurn::Kind::Shared, std::forward<F>(work));
    }

    /// On a concurrent queue: runs `work` alone, when all that was handed over before is done; what is handed
    /// over afterwards begins when it is done. On the queue of `global()` this holds up everybody. On other
    /// queues it is `async`.
    void barrierAsync(UniqueFunction<void()> work, TraceSite site = TraceSite::current()) const;

    /// `sync` with the place of `barrierAsync`. A caller that is on the same queue already would wait for
    /// itself, on a concurrent one too: a programming error.
    template <class F> std::invoke_result_t<F> barrierSync(F&& work) const
    {
        return detail::runInTurn(m_core, detail::QueueTurn::Kind::Alone, std::forward<F>(work));
    }

    /// Hands `work` over once so many seconds have passed on the world's monotonic clock; 0, less or no
    /// number is `async`, infinity is never. Work of several calls is handed over by the moment it is meant
    /// for, and that of one moment in the order of the calls. One allocation.
    void asyncAfter(double seconds, UniqueFunction<void()> work, TraceSite site = TraceSite::current()) const;

    /// Whether the caller runs as work of this queue. For the main queue: on the main thread.
    bool isCurrent() const noexcept;

    /// What it was made with. It lives as long as a handle does.
    const std::string& label() const noexcept;

    /// Never changes.
    Kind kind() const noexcept;

    /// The queue that copies share.
    const void* sharedIdentity() const noexcept { return m_core.get(); }

    /// Whether both are the same queue.
    friend bool operator==(const DispatchQueue&, const DispatchQueue&) noexcept = default;

private:
    explicit DispatchQueue(std::shared_ptr<detail::QueueCore> core) noexcept;

    std::shared_ptr<detail::QueueCore> m_core;
};

} // namespace orrenby
