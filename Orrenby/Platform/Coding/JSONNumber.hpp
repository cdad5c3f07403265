#pragma once

/// @file
/// The numbers of JSON, from their text and to it. Not in the umbrella header: part of the coders' own
/// workings.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <optional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The number as an integer when it is exactly one that fits: `1.0`, `1e3` and `-0` are.
///
/// @param text  A number of the JSON grammar. Linear in its length; nothing is rounded on the way.
std::optional<std::int64_t> jsonInteger(std::string_view text);
std::optional<std::uint64_t> jsonUnsigned(std::string_view text);

/// The nearest number; nothing when it is beyond the largest one. What is too small is 0.
std::optional<double> jsonDouble(std::string_view text);
std::optional<float> jsonFloat(std::string_view text);

/// The most bytes that the functions below write.
inline constexpr std::size_t longestJSONNumber = 32;

/// Writes the digits and returns their end.
char* writeJSONInteger(char* place, std::int64_t value);
char* writeJSONUnsigned(char* place, std::uint64_t value);

/// The shortest form that reads back as the same number, with the sign of a negative zero kept: `-0.0`.
/// `value` is finite.
char* writeJSONDouble(char* place, double value);
char* writeJSONFloat(char* place, float value);

} // namespace orrenby::inline ORRENBY_ABI::detail
