#include "Orrenby/Utilities/Discover/ForcedConversion.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI {

void detail::failedConversion(std::string_view from, std::string_view to) noexcept
{
    const auto message = "Could not convert value of type '" + std::string(from) + "' to '" + std::string(to)
        + "'";
    fatalError(message, "Utilities/Discover");
}

} // namespace orrenby
