#include "Orrenby/Utilities/ServiceDecoder/KeyedServiceResponse.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceHandlers.hpp"

namespace orrenby::inline ORRENBY_ABI {

KeyedServiceResponse KeyedServiceResponse::init(const Decoder& decoder)
{
    // Kept by a copy: a callable that registers replaces the entry.
    const auto entry = decoder.userInfo()[detail::serviceHandlersKey];
    const auto* handlers = entry.get<detail::ServiceHandlers>();
    if (handlers == nullptr)
        fatalError("ServiceDecoder handlers missing", "Utilities/ServiceDecoder");

    const auto members = decoder.container<ServiceKey>();
    for (const auto& handler : *handlers)
        handler->handle(members);
    return {};
}

} // namespace orrenby
