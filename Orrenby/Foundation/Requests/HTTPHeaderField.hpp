#pragma once

/// @file
/// Names of header fields.

#include "Orrenby/Platform/Export.hpp"
#include <string_view>

/// The names of the header fields that requests use.
namespace orrenby::inline ORRENBY_ABI::HTTPHeaderField {

inline constexpr std::string_view authorization = "Authorization";
inline constexpr std::string_view authToken = "X-Auth-Token";
inline constexpr std::string_view contentType = "Content-Type";

} // namespace orrenby::HTTPHeaderField
