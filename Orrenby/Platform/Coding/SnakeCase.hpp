#pragma once

/// @file
/// Between `camelCase` and `snake_case`. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Export.hpp"
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// `first_name` to `firstName`. A key of one word stays as it is; underscores at either end stay. Only ASCII
/// letters change.
std::string fromSnakeCase(std::string_view key);

/// `firstName` to `first_name`, `myURLProperty` to `my_url_property`. Only ASCII letters change.
std::string toSnakeCase(std::string_view key);

} // namespace orrenby::inline ORRENBY_ABI::detail
