#include "Orrenby/Utilities/Log/TeeHandler.hpp"

namespace orrenby::inline ORRENBY_ABI::Log {

void TeeHandler::operator()(Level level, const DeferredEvent& event)
{
    for (EventHandler& handler : m_handlers)
        handler(level, event);
}

void TeeHandler::add(EventHandler handler)
{
    if (handler)
        m_handlers.push_back(std::move(handler));
}

} // namespace orrenby::Log
