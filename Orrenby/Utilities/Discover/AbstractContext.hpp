#pragma once

/// @file
/// The base class of application contexts.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/Discover/ContextCore.hpp"
#include "Orrenby/Utilities/Discover/ForcedConversion.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Base class of application contexts: while it is active, its workers run and its subscriptions live.
///
/// A subclass fills in `didBecomeActive()` and `willResignActive()` and stores its subscriptions in itself.
/// It is created with `make<T>(…)` and driven by the flow that owns it.
///
/// @snippet Tests/Utilities/Discover/AbstractContextTests.cpp Writing a context
///
/// When its last reference goes away, an active context is deactivated, hooks included; then it lets go of
/// its subscriptions, its analytics and its workers, in this order. In those hooks weak references to it are
/// already empty, and one that throws ends the process. A destructor of a subclass finds all three gone.
///
/// Not synchronised. Use from the main thread.
template <class Analytics> class AbstractContext : public detail::ContextCore {
public:
    /// Analytics that stands among the workers already stands there twice, which its own guards make
    /// harmless.
    ///
    /// @param workers    Start and stop with the context, in this order.
    /// @param analytics  Also a `Worker`, or the process ends. It becomes the last one.
    AbstractContext(Workers workers, Ref<Analytics> analytics)
        : ContextCore(std::move(workers), detail::forcedConversion<Worker>(analytics))
        , m_analytics(std::move(analytics))
    {}

    /// What it was made with; the same object as long as the context lives.
    const Ref<Analytics>& analytics() const { return m_analytics; }

private:
    void release() noexcept final
    {
        deactivate();
        releaseCancellables();
        m_analytics.reset();
        m_workerController.reset();
    }

    Ref<Analytics> m_analytics;
};

} // namespace orrenby
