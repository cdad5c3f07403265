#pragma once

/// @file
/// Which operation a thread runs as. Not in the umbrella header: part of the queues' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"

namespace orrenby::inline ORRENBY_ABI {

class Operation;

namespace detail {

class OperationQueueCore;

/// Says of a thread that it runs an operation, while it stands.
///
/// An operation that starts another one by hand runs as both. What merely runs on top of it, because the
/// thread waits, was started by a queue: that begins a new chain.
class OperationFrame {
public:
    /// @param queue  The queue that starts it; none when it is started by hand.
    OperationFrame(const Operation& operation, OperationQueueCore* queue) noexcept;
    OperationFrame(const OperationFrame&) = delete;
    OperationFrame& operator=(const OperationFrame&) = delete;
    ~OperationFrame();

    /// The queue in whose name the thread runs, if there is one.
    static OperationQueueCore* queue() noexcept;
    /// Whether a queue has just begun to start `operation` on this thread.
    static bool isStarting(const Operation& operation) noexcept;
    /// Whether the thread runs as `operation`.
    static bool has(const Operation& operation) noexcept;

private:
    const Operation& m_operation;
    OperationQueueCore* const m_queue;
    const OperationFrame* const m_previous;
};

} // namespace detail

} // namespace orrenby
