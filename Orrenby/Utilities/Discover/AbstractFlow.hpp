#pragma once

/// @file
/// The base class of application flows.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/Discover/FlowCore.hpp"
#include "Orrenby/Utilities/Discover/ForcedConversion.hpp"
#include "Orrenby/Utilities/Discover/ReleasableField.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Base class of application flows: owns a context and a view controller, and forms a tree with its
/// sub-flows.
///
/// A subclass fills in `didStart()`. It is created with `make<T>(…)`. The root flow is started by its owner,
/// every other one by `attach` of its parent. How the view controller is shown is the application's business:
/// it is stored, no more.
///
/// @snippet Tests/Utilities/Discover/AbstractFlowTests.cpp Writing a flow
///
/// When its last reference goes away, the sub-flows are detached, first to last, and those that nobody else
/// holds end theirs; then the context is deactivated; then the context, the view controller and the sub-flows
/// are let go, in this order. In hooks that run then, weak references to the flow are already empty, and one
/// that throws ends the process. A destructor of a subclass finds all three gone.
///
/// Not synchronised. Use from the main thread.
template <class ContextType, class ViewController> class AbstractFlow : public detail::FlowCore {
public:
    /// @param context  Must be a `Context`, which is tested at run time. Anything else ends the process.
    /// @param viewController  Kept as it is: a handle, a value.
    AbstractFlow(Ref<ContextType> context, ViewController viewController)
        : FlowCore(detail::forcedConversion<Context>(context))
        , m_context(std::move(context))
        , m_viewController(std::move(viewController))
    {}

    /// What it was made with.
    const Ref<ContextType>& context() const { return m_context; }

    /// What it was made with. A reference to what the flow holds, good as long as the flow is.
    const ViewController& viewController() const { return m_viewController.get(); }

private:
    void release() noexcept final
    {
        endAll();
        m_contextInterface.reset();
        m_context.reset();
        m_viewController.release();
        m_flowController.reset();
    }

    Ref<ContextType> m_context;
    detail::ReleasableField<ViewController> m_viewController;
};

} // namespace orrenby
