#include "Orrenby/Utilities/Discover/FlowCore.hpp"

#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

FlowCore::FlowCore(Ref<Context> context)
    : m_contextInterface(std::move(context))
    , m_flowController(make<FlowController>())
{}

FlowCore::~FlowCore() = default;

Ref<Context> FlowCore::_context() const { return m_contextInterface; }

void FlowCore::start()
{
    if (m_contextInterface->isActive())
        return;
    m_contextInterface->activate();
    didStart();
}

void FlowCore::end()
{
    // Held, because this flow may go away while its context deactivates.
    if (const auto context = m_contextInterface; context->isActive())
        context->deactivate();
}

Flows FlowCore::subFlows() const { return m_flowController->flows(); }

void FlowCore::attach(Ref<Flow> flow, TraceSite site)
{
    const auto controller = m_flowController;
    controller->attach(std::move(flow), site);
}

void FlowCore::detach(Ref<Flow> flow, TraceSite site)
{
    const auto controller = m_flowController;
    controller->detach(std::move(flow), site);
}

void FlowCore::didStart() {}

void FlowCore::endAll()
{
    for (const auto& flow : m_flowController->flows())
        m_flowController->detach(flow, CallSite("Utilities/Discover", 0, "release"));
    m_contextInterface->deactivate();
}

} // namespace orrenby::detail
