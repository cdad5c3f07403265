#include "Orrenby/Utilities/ServiceDecoder/ServiceKey.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::optional<ServiceKey> ServiceKey::make(std::int64_t) { return std::nullopt; }

std::string ServiceKey::debugDescription() const
{
    return "ServiceKey(stringValue: " + detail::quoted(stringValue) + ", intValue: none)";
}

} // namespace orrenby
