#include "Orrenby/Platform/Text/ShownAttributes.hpp"

#include "Orrenby/Platform/Net/URL.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

char lowercase(char letter) noexcept
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

std::optional<std::string> shownLink(
    const TextAttributes& attributes, const std::vector<std::string>& schemes)
{
    const auto url = attributes.get(TextAttribute::link);
    const auto scheme = url ? url->scheme() : std::nullopt;
    const bool isAllowed = scheme
        && std::any_of(schemes.begin(), schemes.end(), [&](std::string_view allowed) {
               return std::equal(allowed.begin(), allowed.end(), scheme->begin(), scheme->end(),
                   [](char one, char other) { return lowercase(one) == lowercase(other); });
           });
    return isAllowed ? std::optional(url->absoluteString()) : std::nullopt;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
