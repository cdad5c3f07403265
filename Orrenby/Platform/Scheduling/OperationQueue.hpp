#pragma once

/// @file
/// Queues of operations.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/Operation.hpp"
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

class OperationQueueCore;

} // namespace detail

/// How to add several operations.
struct AddOperationsOptions {
    bool waitUntilFinished = false; ///< Return when all of them have finished.
};

/// Starts operations as they become ready, the one of the highest priority first, and among equals the one
/// that was added first.
///
/// @snippet Tests/Platform/Scheduling/OperationQueueTests.cpp Running operations
///
/// An operation stays in the queue, and holds one of its places, until the queue has seen it finish, however
/// long that is after `start` has returned. A cancelled one is started as well, so that it can finish.
/// Operations may add others, to their own queue too.
///
/// The threads belong to the world's executor, or to the `underlyingQueue`. How many operations execute at a
/// time is up to them, or limited by `maxConcurrentOperationCount`; with 1 the queue is serial. Under a world
/// held by a test everything runs on the one thread that drives the test.
///
/// A handle: copies are the same queue. A queue without handles goes on until its last operation has
/// finished; if it is suspended, or one of its operations never becomes ready, it stays for ever. Safe to use
/// from several threads; no lock is held while an operation is asked or started.
class ORRENBY_EXPORT OperationQueue {
public:
    /// As many as the executor, or the underlying queue, allows.
    static constexpr int defaultMaxConcurrentOperationCount = -1;

    OperationQueue();

    /// The queue of the main thread, one operation at a time: its `underlyingQueue` is
    /// `DispatchQueue::main()`. There is one; its limit cannot be changed.
    static OperationQueue main();

    /// The queue that started the operation which the caller runs as; otherwise, on the main thread, the main
    /// queue.
    static std::optional<OperationQueue> current();

    /// Whether the caller runs as an operation that this queue started; for the main queue: on the main
    /// thread.
    bool isCurrent() const noexcept;

    /// Starts `operation` in its turn. An operation goes into one queue, once, and before it begins:
    /// everything else is a programming error. O(log n) at worst with n in the queue.
    void addOperation(Ref<Operation> operation, TraceSite site = TraceSite::current()) const;

    /// Adds a `BlockOperation` that runs `block`. One allocation for a closure of up to four words.
    void addOperation(UniqueFunction<void()> block, TraceSite site = TraceSite::current()) const;

    /// Adds them in the order of the list. See `addOperation`, and with `waitUntilFinished`
    /// `Operation::waitUntilFinished`.
    void addOperations(const std::vector<Ref<Operation>>& operations, AddOperationsOptions options = {},
        TraceSite site = TraceSite::current()) const;

    /// Runs `block` alone: when everything added before has finished, and before anything added afterwards
    /// begins.
    void addBarrierBlock(UniqueFunction<void()> block, TraceSite site = TraceSite::current()) const;

    /// Cancels everything in the queue, executing or not, in the order of adding.
    void cancelAllOperations() const;

    /// Blocks until the queue is empty, of what is added meanwhile as well. Who runs as an operation of this
    /// queue would wait for itself: a programming error. A suspended queue is waited for until somebody
    /// resumes it.
    void waitUntilAllOperationsAreFinished() const;

    /// What has not finished yet, in the order of adding.
    std::vector<Ref<Operation>> operations() const;

    /// How many they are.
    std::size_t operationCount() const;

    /// While suspended, nothing begins. What is executing goes on.
    bool isSuspended() const;
    void setSuspended(bool isSuspended) const;

    /// How many execute at a time; −1 leaves it to the queue.
    int maxConcurrentOperationCount() const;
    /// Lowering it does not stop what is executing; with 0 nothing begins. Less than −1 is a programming
    /// error. No effect on the main queue.
    void setMaxConcurrentOperationCount(int count) const;

    /// Where operations are started; nothing: on the world's executor.
    std::optional<DispatchQueue> underlyingQueue() const;
    /// Each start is one piece of work of that queue. To set it while the queue has operations, or on the
    /// main queue, is a programming error.
    void setUnderlyingQueue(std::optional<DispatchQueue> queue) const;

    /// For reports only. Empty at first.
    std::string name() const;
    void setName(std::string name) const;

    /// The queue that copies share.
    const void* sharedIdentity() const noexcept { return m_core.get(); }

    /// Whether both are the same queue.
    friend bool operator==(const OperationQueue&, const OperationQueue&) noexcept = default;

private:
    explicit OperationQueue(Ref<detail::OperationQueueCore> core) noexcept;

    Ref<detail::OperationQueueCore> m_core;
};

} // namespace orrenby
