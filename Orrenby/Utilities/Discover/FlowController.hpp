#pragma once

/// @file
/// The list of flows that one owner has started.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Platform/Objects/TestAccess.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Utilities/Discover/Flow.hpp"
#include "Orrenby/Utilities/Discover/TypedSearch.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {
class FlowCore;
}

/// Keeps the flows attached to one owner: attaching starts a flow, detaching ends it.
///
/// Every `AbstractFlow` has one of its own for its sub-flows. When the last reference goes away, all flows
/// still attached are detached, first to last, then let go. A call that does not apply has no effect and is
/// not an error.
///
/// @snippet Tests/Utilities/Discover/FlowControllerTests.cpp Attaching and detaching
///
/// A flow is the object, whatever interface it is seen through. In the typed operations `T` is a class or an
/// interface, and a callable takes a `T&` or a `const Ref<T>&`. All operations are O(n). An empty reference
/// given to any of them is a programming error.
///
/// Not synchronised. Use from the main thread.
class ORRENBY_EXPORT FlowController : public Lifetime {
public:
    FlowController();
    ~FlowController() override;

    /// The attached flows at this moment, in the order of attaching. Each stands there once.
    Flows flows() const { return m_flows; }

    /// Appends `flow`, then starts it; a flow that looks at this list while it starts is already in it.
    ///
    /// Without effect if it is attached here already, or if its context is active.
    void attach(Ref<Flow> flow, TraceSite site = TraceSite::current());

    /// Ends `flow`, then removes it.
    ///
    /// Without effect if it is not attached here, or if its context is not active: such a flow stays in the
    /// list. A `willResignActive()` that detaches its own flow recurses for ever, since the flow is still
    /// attached and active then.
    void detach(Ref<Flow> flow, TraceSite site = TraceSite::current());

    /// Detaches the flows that are a `T` and for which `predicate` is true, the last attached first.
    ///
    /// It walks a snapshot: flows attached meanwhile are left alone, flows detached meanwhile are still asked
    /// about.
    template <class T, detail::PredicateOn<T> Predicate>
    void detach(Predicate&& predicate, TraceSite site = TraceSite::current())
    {
        const auto snapshot = m_flows;
        for (auto place = snapshot.size(); place-- != 0;)
            if (const auto match = std::dynamic_pointer_cast<T>(snapshot[place]);
                match && detail::callOn(match, predicate))
                detach(snapshot[place], site);
    }

    /// The first flow that is a `T`, or an empty reference.
    template <class T> Ref<T> firstFlow() const { return detail::firstOfType<T>(m_flows); }

    /// Calls `perform` once with the first flow that is a `T`; without one it does nothing. What `perform`
    /// throws passes through.
    template <class T, detail::CallableOn<T> Perform> void withFirstFlow(Perform&& perform) const
    {
        detail::withFirstOfType<T>(m_flows, perform);
    }

    /// All flows that are a `T`, in list order.
    template <class T> std::vector<Ref<T>> flows() const { return detail::allOfType<T>(m_flows); }

    /// Calls `perform` with each flow that is a `T`, in list order, as they were before the first call. The
    /// first exception ends the walk and passes through.
    template <class T, detail::CallableOn<T> Perform> void withFlows(Perform&& perform) const
    {
        detail::withAllOfType<T>(m_flows, perform);
    }

private:
    void release() noexcept final;
    bool contains(const Flow& flow) const;

    Flows m_flows;
    bool m_isFlowLeakDetectionEnabled = true;

    friend class detail::FlowCore;
    friend struct testing::TestAccess;
};

} // namespace orrenby
