#pragma once

/// @file
/// The base class of application workers.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Utilities/Discover/CancellableOwner.hpp"
#include "Orrenby/Utilities/Discover/Worker.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// Base class of application workers: starts and stops once each, and cancels its subscriptions when it
/// stops.
///
/// A subclass fills in the hooks and stores its subscriptions in itself. It is created with `make<T>(…)`,
/// starts no thread and is usually driven by a context.
///
/// @snippet Tests/Utilities/Discover/AbstractWorkerTests.cpp Writing a worker
///
/// When its last reference goes away, a working worker stops, hooks included. In those hooks weak references
/// to it are already empty. A hook that throws then ends the process.
///
/// Not synchronised. Use from the main thread.
class ORRENBY_EXPORT AbstractWorker : public Lifetime, public Worker, public CancellableOwner {
public:
    AbstractWorker();
    ~AbstractWorker() override;

    /// Still true while `willStop()` runs.
    bool isWorking() const override;

    /// Marks the worker as working, then calls `didStart()`. On a working worker it does nothing.
    void start() final;

    /// Calls `willStop()`, cancels the subscriptions, drops them, and marks the worker as idle, in this
    /// order. On an idle worker it does nothing. It can be started again.
    void stop() final;

protected:
    /// The worker works now. Empty by default.
    virtual void didStart();

    /// The worker is about to stop: `isWorking()` is still true and subscriptions still deliver. Empty by
    /// default.
    ///
    /// For the same reason a call of `stop()` in here, or of `deactivate()` of its context, recurses for
    /// ever.
    virtual void willStop();

private:
    void release() noexcept final;

    bool m_isWorking = false;
};

} // namespace orrenby
