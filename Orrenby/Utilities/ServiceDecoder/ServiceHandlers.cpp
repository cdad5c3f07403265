#include "Orrenby/Utilities/ServiceDecoder/ServiceHandlers.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"
#include <algorithm>
#include <exception>

namespace orrenby::inline ORRENBY_ABI::detail {

ServiceHandler::~ServiceHandler() = default;

void ServiceHandler::handle(const ServiceMembers& members) const
{
    try {
        load(members);
    } catch (...) {
        Log::critical(AnyError(std::current_exception()), {{"Service Decoder Key", m_key.stringValue}},
            CallSite("Utilities/ServiceDecoder", 65, "register(_:onLoad:)"));
    }
}

void ServiceHandlers::add(Handler handler) { m_handlers.push_back(std::move(handler)); }

const ServiceHandlers::Handler* ServiceHandlers::begin() const noexcept { return m_handlers.data(); }

const ServiceHandlers::Handler* ServiceHandlers::end() const noexcept
{
    return m_handlers.data() + m_handlers.size();
}

bool ServiceHandlers::contains(const ServiceKey& key) const noexcept
{
    return std::any_of(begin(), end(), [&](const Handler& handler) { return handler->key() == key; });
}

} // namespace orrenby::inline ORRENBY_ABI::detail
