#pragma once

/// @file
/// What stands in brackets in a text. Not in the umbrella header: part of the markup's own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/RegularExpression.hpp"
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A pattern of brackets, and the signs that each of its matches consists of, one after another on one line.
struct BracketPattern {
    /// Nothing should the engine not take it.
    std::optional<RegularExpression> expression;
    std::vector<std::string_view> signs;
};

/// `[inner text]`
ORRENBY_EXPORT const BracketPattern& emphasisPattern();
/// `[visible text](target)`
ORRENBY_EXPORT const BracketPattern& linkPattern();

/// One match, and its groups, as views into the text.
struct BracketMatch {
    std::string_view whole;
    std::vector<std::string_view> groups;
};

/// Every match of the pattern, first to last, none overlapping another: those of the expression in the whole
/// text.
///
/// The engine alone looks from each "[" that is never closed to the end of its line: a second for ten
/// thousand of them, hours for a million. It is shown only the stretches in which every sign is there.
/// Linear.
///
/// @returns Nothing when the engine fails.
ORRENBY_EXPORT std::optional<std::vector<BracketMatch>> bracketMatches(
    std::string_view text, const BracketPattern& pattern);

/// The text with "%" in place of each "%%", and nothing else: what is formatted without arguments.
ORRENBY_EXPORT std::string formatted(std::string_view text);

/// The text with an argument in place of each "%@", in their order, "(null)" once there are no more, and "%"
/// in place of "%%". Every other "%" stays, and what stands in the arguments is left alone.
ORRENBY_EXPORT std::string formatted(std::string_view text, const std::vector<std::string_view>& arguments);

} // namespace orrenby::inline ORRENBY_ABI::detail
