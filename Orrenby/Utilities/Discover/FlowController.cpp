#include "Orrenby/Utilities/Discover/FlowController.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI {

namespace {

void require(const Ref<Flow>& flow)
{
    if (!flow)
        fatalError("Empty reference in place of a flow", "Utilities/Discover");
}

bool isActive(const Flow& flow)
{
    const auto context = flow._context();
    if (!context)
        fatalError("Flow without a context", "Utilities/Discover");
    return context->isActive();
}

void report(
    [[maybe_unused]] Trace::Kind kind, [[maybe_unused]] const Flow& flow, [[maybe_unused]] TraceSite site)
{
#ifdef ORRENBY_DIAGNOSTICS
    Trace::report(kind, typeName(flow), site);
#endif
}

} // namespace

FlowController::FlowController() = default;
FlowController::~FlowController() = default;

bool FlowController::contains(const Flow& flow) const
{
    return std::any_of(m_flows.begin(), m_flows.end(),
        [&](const Ref<Flow>& other) { return isSameObject(other.get(), &flow); });
}

void FlowController::attach(Ref<Flow> flow, TraceSite site)
{
    require(flow);
    if (contains(*flow) || isActive(*flow))
        return;
    report(Trace::Kind::Attach, *flow, site);
    m_flows.push_back(flow);
    flow->start();
}

void FlowController::detach(Ref<Flow> flow, TraceSite site)
{
    require(flow);
    if (!contains(*flow) || !isActive(*flow))
        return;
    report(Trace::Kind::Detach, *flow, site);
    flow->end();
    // `flow` is held here, so nothing that removal lets go of can run user code while the list changes.
    std::erase_if(m_flows, [&](const Ref<Flow>& other) { return isSameObject(other, flow); });
}

void FlowController::release() noexcept
{
    for (const auto& flow : flows())
        detach(flow, CallSite("Utilities/Discover", 0, "release"));
    for (auto& flow : std::exchange(m_flows, {}))
        flow.reset();
}

} // namespace orrenby
