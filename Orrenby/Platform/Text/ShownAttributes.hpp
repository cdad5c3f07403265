#pragma once

/// @file
/// What all renderings of texts with attributes ask for. Not in the umbrella header: part of their workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/TextAttributes.hpp"
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The address of a link whose scheme is one of these, whatever its case. A relative link has none.
std::optional<std::string> shownLink(
    const TextAttributes& attributes, const std::vector<std::string>& schemes);

/// Whether a switch is there and on.
inline bool isOn(const TextAttributes& attributes, const TextAttributeKey<bool>& key)
{
    return attributes.get(key).value_or(false);
}

/// C0, DEL and C1.
constexpr bool isControl(char32_t scalar) noexcept
{
    return scalar < 0x20 || (scalar >= 0x7F && scalar <= 0x9F);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
