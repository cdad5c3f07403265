#pragma once

/// @file
/// What all flows do, whatever the types of their context and view controller.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Platform/Objects/TestAccess.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Utilities/Discover/Flow.hpp"
#include "Orrenby/Utilities/Discover/FlowController.hpp"
#include "Orrenby/Utilities/Discover/FlowRetaining.hpp"
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

template <class ContextType, class ViewController> class AbstractFlow;

namespace detail {

/// The part of `AbstractFlow` that does not depend on its types. Nothing else derives from it.
///
/// Its public members are those of what derives from it.
class ORRENBY_EXPORT FlowCore : public Lifetime, public Flow {
public:
    ~FlowCore() override;

    Ref<Context> _context() const final;

    /// Activates the context, then calls `didStart()`. While the context is active it does nothing.
    void start() final;

    /// Deactivates the context. Sub-flows stay attached and active. While the context is inactive it does
    /// nothing.
    void end() final;

    /// The attached sub-flows at this moment, in the order of attaching.
    ///
    /// An override hides the typed form below; `using` brings it back.
    virtual Flows subFlows() const;

    // The rest acts on the flow's own `FlowController`, which tells the details.

    /// Appends `flow` to the sub-flows, then starts it. Without effect if it is there already or its context
    /// is active.
    void attach(Ref<Flow> flow, TraceSite site = TraceSite::current());

    /// Ends `flow`, then removes it from the sub-flows. Without effect if it is not there or its context is
    /// inactive.
    void detach(Ref<Flow> flow, TraceSite site = TraceSite::current());

    /// Detaches the sub-flows that are a `T` and for which `predicate` is true, the last attached first.
    template <class T, PredicateOn<T> Predicate>
    void detach(Predicate&& predicate, TraceSite site = TraceSite::current())
    {
        // Held, because this flow may go away when a sub-flow ends.
        const auto controller = m_flowController;
        controller->detach<T>(predicate, site);
    }

    /// The first sub-flow that is a `T`, a class or an interface; otherwise an empty reference.
    template <class T> Ref<T> firstSubFlow() const { return m_flowController->firstFlow<T>(); }

    /// Calls `perform` with a `T&` or a `const Ref<T>&`, once, if there is a sub-flow that is a `T`. What it
    /// throws passes through.
    template <class T, CallableOn<T> Perform> void withFirstSubFlow(Perform&& perform) const
    {
        m_flowController->withFirstFlow<T>(perform);
    }

    /// All sub-flows that are a `T`, in list order.
    template <class T> std::vector<Ref<T>> subFlows() const { return m_flowController->flows<T>(); }

    /// Calls `perform` with each sub-flow that is a `T`, in list order. The first exception ends the walk and
    /// passes through.
    template <class T, CallableOn<T> Perform> void withSubFlows(Perform&& perform) const
    {
        m_flowController->withFlows<T>(perform);
    }

protected:
    /// The flow has started: its context is active and the workers run. Here is the place to attach
    /// sub-flows. Empty by default.
    virtual void didStart();

    /// Finds out what the most derived class wants to be kept.
    template <class T> void afterInit(Final<T>)
    {
        m_flowController->m_isFlowLeakDetectionEnabled = !std::is_base_of_v<FlowRetaining, T>;
    }

private:
    explicit FlowCore(Ref<Context> context);

    /// The part of the end that calls others: sub-flows first, then the context.
    void endAll();

    Ref<Context> m_contextInterface;
    Ref<FlowController> m_flowController;

    template <class ContextType, class ViewController> friend class orrenby::AbstractFlow;
    friend struct testing::TestAccess;
};

} // namespace detail

} // namespace orrenby
