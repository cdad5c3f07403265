#pragma once

/// @file
/// The list of workers that start and stop together.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Utilities/Discover/TypedSearch.hpp"
#include "Orrenby/Utilities/Discover/Worker.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// Holds a fixed list of workers, and starts and stops them in list order.
///
/// A context has one of its own. When the last reference goes away, every worker is stopped and then let go,
/// first to last. A worker that stands in the lists of two controllers is therefore stopped by the end of
/// either.
///
/// @snippet Tests/Utilities/Discover/WorkerControllerTests.cpp Driving several workers
///
/// In the typed operations `T` is a class or an interface, and a callable takes a `T&` or a `const Ref<T>&`.
/// Each costs one dynamic cast per worker.
///
/// Not synchronised. Use from the main thread.
class ORRENBY_EXPORT WorkerController : public Lifetime {
public:
    /// An empty reference in the list is a programming error.
    explicit WorkerController(Workers workers);
    ~WorkerController() override;

    /// In the order in which they start.
    const Workers& workers() const { return m_workers; }

    /// Starts each worker, first to last.
    void startWorkers();

    /// Stops each worker, first to last.
    void stopWorkers();

    /// The first worker that is a `T`, or an empty reference.
    template <class T> Ref<T> firstWorker() const { return detail::firstOfType<T>(m_workers); }

    /// Calls `perform` once with the first worker that is a `T`; without one it does nothing. What `perform`
    /// throws passes through.
    template <class T, detail::CallableOn<T> Perform> void withFirstWorker(Perform&& perform) const
    {
        detail::withFirstOfType<T>(m_workers, perform);
    }

    /// All workers that are a `T`, in list order.
    template <class T> std::vector<Ref<T>> workers() const { return detail::allOfType<T>(m_workers); }

    /// Calls `perform` with each worker that is a `T`, in list order. The first exception ends the walk and
    /// passes through.
    template <class T, detail::CallableOn<T> Perform> void withWorkers(Perform&& perform) const
    {
        detail::withAllOfType<T>(m_workers, perform);
    }

private:
    void release() noexcept final;

    Workers m_workers;
};

} // namespace orrenby
