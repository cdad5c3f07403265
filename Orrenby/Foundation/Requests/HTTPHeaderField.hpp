#pragma once

/// @file
/// Names of header fields.

#include "Orrenby/Platform/Export.hpp"
#include <string_view>

/// The names of the header fields that requests use.
namespace orrenby::inline ORRENBY_ABI::HTTPHeaderField {

inline constexpr std::string_view authorization = "Authorization"; ///< Says who asks.
/// Says who asks, to services with a field of their own for it.
inline constexpr std::string_view authToken = "X-Auth-Token";
inline constexpr std::string_view contentType = "Content-Type"; ///< The media type of the body.

} // namespace orrenby::HTTPHeaderField
