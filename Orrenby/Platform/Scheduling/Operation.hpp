#pragma once

/// @file
/// A piece of work with a life of its own: it waits for others, can be cancelled, and tells how far it is.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Scheduling/OperationPlace.hpp"
#include "Orrenby/Platform/Scheduling/PlainMutex.hpp"
#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class Operation;

namespace detail {

class OperationLine;
struct OperationExtras;

/// Takes these questions and acts from the base class, which tells of all their changes itself.
template <class T>
concept FinishesPlainly = std::same_as<decltype(&T::start),
    void (Operation::*)()> && std::same_as<decltype(&T::isFinished), bool (Operation::*)() const>;
template <class T>
concept GetsReadyPlainly = std::same_as<decltype(&T::isReady), bool (Operation::*)() const>;

} // namespace detail

/// One piece of work, made with `make<T>` and handed to an `OperationQueue`.
///
/// It is *ready* once all operations that it depends on have finished, *executing* after `start`, and in the
/// end *finished*, once and for all. A subclass overrides `main()`, which does the work and returns when it
/// is done. Work that goes on after its call has returned is an `AsyncBaseOperation`, or a subclass that
/// overrides `start`, `isExecuting` and `isFinished`.
///
/// @snippet Tests/Platform/Scheduling/OperationTests.cpp Doing work in an operation
///
/// Changes can be observed under the keys `isReady`, `isCancelled`, `isExecuting`, `isFinished`,
/// `dependencies`, `queuePriority` and `name`, on the thread that makes the change. Queues and dependents
/// learn from these notifications too, so a subclass that overrides `isReady`, `isExecuting` or `isFinished`
/// posts their changes itself, with `willChangeValue` and `didChangeValue`.
///
/// Operations that depend on each other in a circle are never ready, and keep each other alive: `cancel` one
/// of them, or remove a dependency.
///
/// Nothing is cancelled when an operation is released. Safe to use from several threads; no lock is held
/// while notifications, `main` or a completion block run. Held by `Ref`: one that lives on the stack can
/// neither be queued nor depend on others.
class ORRENBY_EXPORT Operation : public Lifetime,
                                 public ObservableObject,
                                 public std::enable_shared_from_this<Operation> {
public:
    /// Which one of several ready operations of a queue begins first. Values between count as the next one
    /// towards `Normal`.
    enum class QueuePriority : std::int8_t { VeryLow = -8, Low = -4, Normal = 0, High = 4, VeryHigh = 8 };

    Operation();
    ~Operation() override;

    /// Begins the work, on the calling thread. A queue calls it; without a queue, call it once the operation
    /// is ready.
    ///
    /// Here: nothing once it has finished. A cancelled one finishes at once. Otherwise it is executing while
    /// `main` runs, and then finished. When it finishes, observers are told in this order: will `isFinished`,
    /// will `isExecuting`, did `isExecuting`, did `isFinished`. To start one that is not ready, or that has
    /// begun already, is a programming error. An overriding `start` must not call this one unless the base
    /// class keeps the states.
    virtual void start();

    /// The work. It may look at `isCancelled()` from time to time. A throw ends the process. Here: nothing,
    /// so a plain `Operation` is a point that waits for others.
    virtual void main();

    /// Asks the operation not to begin, or to stop. It stays in its queue until it has finished, and becomes
    /// ready at once, whatever it depends on, so that its queue can start it and it can finish. One that is
    /// executing has to look by itself. No effect the second time, and after it has finished.
    virtual void cancel();

    /// Whether it may begin: it is cancelled, or nothing that it depends on is unfinished.
    virtual bool isReady() const;

    /// Whether its work has begun and has not finished.
    virtual bool isExecuting() const;

    /// Whether it is done with, cancelled ones included; for good.
    virtual bool isFinished() const;
    /// Whether its work goes on after `start` has returned. A queue does not ask.
    virtual bool isAsynchronous() const;

    /// Whether `cancel` was called before it had finished.
    bool isCancelled() const noexcept;

    /// From now on this operation is not ready before `operation` has finished, by success or cancelled, in
    /// whatever queue or without one. No effect when it depends on it already, or after this one has begun.
    /// Amortised O(1).
    void addDependency(const Ref<Operation>& operation);
    /// No effect when it does not depend on `operation`. O(1).
    void removeDependency(const Ref<Operation>& operation);
    /// What it depends on, in the order of adding, finished ones included. They are let go of when this
    /// operation has finished; from then on there are none.
    std::vector<Ref<Operation>> dependencies() const;

    /// `Normal` until another is set.
    QueuePriority queuePriority() const noexcept;
    /// Counts from now on, also when the operation waits in a queue. O(log n) with n waiting.
    void setQueuePriority(QueuePriority priority);

    /// Called once, soon after the operation has finished, on an unspecified thread, never while it is being
    /// set. Setting another one, or `nullptr`, replaces it as long as it was not due.
    void setCompletionBlock(UniqueFunction<void()> block);

    /// Blocks until the operation has finished. Who runs as this very operation would wait for itself: a
    /// programming error. Waited for for ever is an operation that nobody starts, also because the one that
    /// waits takes its place, as in a serial queue: let operations depend on each other instead.
    void waitUntilFinished();

    /// For reports only. Empty at first.
    std::string name() const;
    void setName(std::string name);

protected:
    /// Finds out which of the class's own states have to be watched.
    template <class T> void afterInit(Final<T>)
    {
        if constexpr (!detail::FinishesPlainly<T>)
            watch("isFinished");
        if constexpr (!detail::GetsReadyPlainly<T>)
            watch("isReady");
    }

    std::optional<Any> valueForUndefinedKey(std::string_view key) const override;

private:
    friend class detail::OperationLine;
    friend class detail::OperationQueueCore;
    class Watcher;
    class Edge;
    friend struct detail::OperationExtras;
    enum class State : std::uint8_t { Waiting, Executing, Finished };

    void release() noexcept final;
    /// For subclasses that hold what the work needs: it has finished, or never will be.
    virtual void letGoOfWork() noexcept;

    void watch(std::string_view key);
    void runMain() noexcept;
    void becomeFinished();
    /// Whoever learns that the operation has finished comes here; the first one lets the others know.
    ///
    /// @param busy  A queue that will look for more to begin by itself as soon as this thread is back in it.
    void noticeFinished(const detail::OperationQueueCore* busy = nullptr);
    void noticeReady(const detail::OperationQueueCore* busy = nullptr);
    void openDependency();
    void closeDependency(const detail::OperationQueueCore* busy);
    /// Gives whether this operation will close it.
    bool addDependent(const Ref<Edge>& edge);
    void letGoOfDependencies() noexcept;
    Ref<detail::OperationQueueCore> queue() const;
    detail::OperationExtras& extras();

    std::atomic<State> m_state = State::Waiting;
    std::atomic<QueuePriority> m_queuePriority = QueuePriority::Normal;
    std::atomic<bool> m_isCancelRequested = false;
    std::atomic<bool> m_isCancelled = false;
    std::atomic<bool> m_isStarted = false;
    std::atomic<bool> m_isQueued = false;
    std::atomic<bool> m_isFinishNoticed = false;
    std::atomic<std::size_t> m_openDependencies = 0;
    mutable detail::PlainMutex m_mutex;
    detail::Owned<detail::OperationExtras> m_extras; ///< Made when first needed.
    detail::OperationPlace m_place;
};

} // namespace orrenby
