#pragma once

/// @file
/// The base of operations whose work goes on after it was started.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Scheduling/Operation.hpp"
#include "Orrenby/Utilities/Synchronized.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// An operation that begins asynchronous work when it is started, and is told when that is done.
///
/// A subclass overrides `execute`, starts its work there, and calls the completion, or `finish()`, from any
/// thread. Until then the operation keeps its place in its queue.
///
/// @snippet Tests/Utilities/AsyncBaseOperationTests.cpp Loading in an operation
///
/// It goes from `ready` to `executing` to `finished`, or from `ready` to `finished` when it is cancelled or
/// finished before it is started, and never back; what does not fit is ignored. Observers are told of each
/// step: will `isExecuting`, did `isExecuting` at the start; at the end will `isFinished`, will
/// `isExecuting`, did `isExecuting`, did `isFinished`; will and did `isFinished` when it never executed.
///
/// It does not stop the work when it is cancelled: the work looks at `isCancelled()`, or the subclass
/// overrides `cancel()`.
///
/// It is made with `make<T>`, which its completion needs to know whether it is still there: one that no
/// reference holds can be cancelled and finished, but not begun.
///
/// Safe to use from several threads. Two threads that finish it at the same moment may both tell observers;
/// its queue and its dependents learn of it once.
class ORRENBY_EXPORT AsyncBaseOperation : public Operation {
public:
    /// Where the operation is on its way.
    enum class State { ready, executing, finished };

    /// Says that the work is done. Copies are the same, calling it again changes nothing.
    ///
    /// It does not keep the operation: called when the operation is gone it does nothing. It finishes the
    /// operation directly, without an overridden `finish()`. Safe to use from several threads.
    class Completion;

    AsyncBaseOperation();
    ~AsyncBaseOperation() override;

    bool isExecuting() const override;
    bool isFinished() const override;
    /// Always.
    bool isAsynchronous() const override;

    /// Begins the work; finishes instead, without `execute`, when the operation is cancelled.
    ///
    /// It asks nothing else: one that has finished without being cancelled, or that executes already, stays
    /// as it is and calls `execute` again. To begin one that no `Ref` holds, on the stack for example, is a
    /// programming error.
    void start() override;

    /// Begins the work and returns. Here, a programming error: a subclass supplies it. What it throws ends
    /// the process when a queue starts the operation.
    virtual void execute(Completion completion);

    /// The work is done, or not to be begun any more.
    virtual void finish();

private:
    void setState(State state);

    Synchronized<State> m_state;
};

/// What `execute` gets, to be called when the work is done.
class ORRENBY_EXPORT AsyncBaseOperation::Completion {
public:
    /// Finishes the operation, if it is still there.
    void operator()() const;

private:
    friend class AsyncBaseOperation;
    explicit Completion(WeakRef<Operation> operation) noexcept;

    WeakRef<Operation> m_operation;
};

} // namespace orrenby
