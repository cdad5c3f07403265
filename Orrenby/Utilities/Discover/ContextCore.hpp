#pragma once

/// @file
/// What all contexts do, whatever their analytics type.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Utilities/Discover/CancellableOwner.hpp"
#include "Orrenby/Utilities/Discover/Context.hpp"
#include "Orrenby/Utilities/Discover/WorkerController.hpp"

namespace orrenby::inline ORRENBY_ABI {

template <class Analytics> class AbstractContext;

namespace detail {

/// The part of `AbstractContext` that does not depend on its analytics type. Nothing else derives from it.
///
/// Its public members are those of what derives from it.
class ORRENBY_EXPORT ContextCore : public Lifetime, public Context, public CancellableOwner {
public:
    ~ContextCore() override;

    bool isActive() const override;

    /// Marks the context as active, calls `didBecomeActive()`, then starts the workers, first to last. On an
    /// active context it does nothing.
    void activate() final;

    /// Stops the workers, first to last, calls `willResignActive()`, cancels the subscriptions, drops them,
    /// and marks the context as inactive, in this order. On an inactive context it does nothing. It can be
    /// activated again.
    void deactivate() final;

    /// The workers in the order of their start; the last one is the analytics worker.
    ///
    /// An override hides the typed form below; `using` brings it back.
    virtual Workers workers() const;

    /// The first worker that is a `T`, a class or an interface; otherwise an empty reference.
    template <class T> Ref<T> firstWorker() const { return m_workerController->firstWorker<T>(); }

    /// Calls `perform` with a `T&` or a `const Ref<T>&`, once, if there is a worker that is a `T`. What it
    /// throws passes through.
    template <class T, CallableOn<T> Perform> void withFirstWorker(Perform&& perform) const
    {
        m_workerController->withFirstWorker<T>(perform);
    }

    /// All workers that are a `T`, in list order.
    template <class T> std::vector<Ref<T>> workers() const { return m_workerController->workers<T>(); }

    /// Calls `perform` with each worker that is a `T`, in list order. The first exception ends the walk and
    /// passes through.
    template <class T, CallableOn<T> Perform> void withWorkers(Perform&& perform) const
    {
        m_workerController->withWorkers<T>(perform);
    }

protected:
    /// The context is active now, its workers have not started yet. Empty by default.
    virtual void didBecomeActive();

    /// The workers have stopped; the context is still active and its subscriptions still deliver. Empty by
    /// default.
    ///
    /// For the same reason a call of `deactivate()` in here, or a detach of the context's own flow, recurses
    /// for ever.
    virtual void willResignActive();

private:
    ContextCore(Workers workers, Ref<Worker> analytics);

    bool m_isActive = false;
    Ref<WorkerController> m_workerController;

    template <class Analytics> friend class orrenby::AbstractContext;
};

} // namespace detail

} // namespace orrenby
