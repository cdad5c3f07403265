#pragma once

/// @file
/// Decoding errors as one readable line.

#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT std::string readableDescriptionOf(const DecodingError& error);
/// The words for an error of this kind, which is its own except where a test needs one that does not exist.
ORRENBY_EXPORT std::string readableDescriptionAs(DecodingError::Kind kind, const DecodingError& error);
ORRENBY_EXPORT std::string readablePathOf(const DecodingError::Context& context);

} // namespace detail

/// What could not be decoded, where, and why: `Type mismatch: Int - Coding Path: a > b - Expected Int but
/// found a text`. Never more than the error itself says; its position in the text is left to
/// `DecodingError::description`.
///
/// @snippet Tests/Standard/JSON/DecodingErrorReadableTests.cpp Reading a decoding error as one line
inline constexpr auto readableDescription = pipeable<const DecodingError&>(
    [](const DecodingError& error) { return detail::readableDescriptionOf(error); });

/// The way to the value: `Coding Path: a > b > Index 2 (2)`. Keys that are integers too have it in
/// parentheses, except the first key. At the root it is `Empty coding path`.
inline constexpr auto readablePath = pipeable<const DecodingError::Context&>(
    [](const DecodingError::Context& context) { return detail::readablePathOf(context); });

} // namespace orrenby
