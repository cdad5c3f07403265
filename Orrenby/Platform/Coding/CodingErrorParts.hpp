#pragma once

/// @file
/// What both coding errors say alike. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// `a > b > Index 2`, or `the root`.
std::string joinedPath(const std::vector<CodingKey>& path);

Dictionary codingErrorUserInfo(const std::vector<CodingKey>& path, const std::string& debugDescription,
    const std::optional<AnyError>& underlyingError);

} // namespace orrenby::inline ORRENBY_ABI::detail
