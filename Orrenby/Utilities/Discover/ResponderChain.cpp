#include "Orrenby/Utilities/Discover/ResponderChain.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI {

void detail::emptyResponderPart(std::string_view what) noexcept
{
    fatalError("Empty " + std::string(what), "Utilities/Discover");
}

} // namespace orrenby
