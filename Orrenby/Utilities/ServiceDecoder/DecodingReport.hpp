#pragma once

/// @file
/// All that is wrong with a document.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Coding/TextPosition.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// One value that does not decode.
///
/// A plain value. Not synchronised.
struct ORRENBY_EXPORT DecodingFailure {
    /// The way to it from the root. For a missing member the way to the object that lacks it.
    std::vector<CodingKey> codingPath = {};
    /// Where it begins in the text, line and column counted from 1.
    TextPosition position = {};
    /// One line of the text around it, valid UTF-8 whatever the text holds: up to 24 characters before and 40
    /// from its beginning on, with "…" where there is more. Blanks and line ends in a row are one blank.
    std::string excerpt = {};
    /// A `DecodingError`, or whatever a type's own `init` threw.
    AnyError error;

    /// `user > age, line 3, column 7: Expected Int but found a text: {"age": "old"}`
    std::string description() const;

    friend bool operator==(const DecodingFailure&, const DecodingFailure&) = default;
};

/// The values of a document that do not decode, in the order in which decoding would meet them.
///
/// A plain value. Not synchronised.
struct ORRENBY_EXPORT DecodingReport {
    std::vector<DecodingFailure> failures = {}; ///< In the order in which decoding would meet them.

    /// Whether everything decodes.
    bool isEmpty() const noexcept { return failures.empty(); }

    /// A line for each failure; empty if there is none.
    std::string description() const;

    friend bool operator==(const DecodingReport&, const DecodingReport&) = default;
};

} // namespace orrenby
