#include "Orrenby/Standard/NestedError.hpp"

#include "Orrenby/Platform/World/Bundle.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

std::string nestedErrorDomain(std::string typePart)
{
    const auto identifier = Bundle::main().identifier();
    return identifier ? *identifier + "." + typePart : typePart;
}

Dictionary nestedErrorUserInfo(
    Dictionary additional, std::string description, const std::optional<NSError>& underlying)
{
    additional.set(NSLocalizedDescriptionKey, std::move(description));
    if (underlying)
        additional.set(NSUnderlyingErrorKey, *underlying);
    return additional;
}

} // namespace detail

} // namespace orrenby
