#pragma once

/// @file
/// Why a text is no e-mail address.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A piece of an address, as `emailPattern()` takes it apart.
enum class EmailPatternPiece : std::uint8_t {
    LocalPart,
    QuotedLocalPart,
    Domain,
    AddressLiteral, ///< What stands in "[" and "]" instead of a domain.
};

/// What keeps a text from being an e-mail address.
///
/// A plain value. Not synchronised.
struct EmailPatternMismatch {
    EmailPatternPiece piece{}; ///< Which part of an address it keeps from being one.
    /// Where it shows, in bytes. The length of the text when something is missing at its end. What stands
    /// before it could be the beginning of an address.
    std::size_t position = 0;
    /// One sentence in English: `A space may not stand in the local part.`
    std::string sentence;

    const std::string& description() const noexcept { return sentence; }

    friend bool operator==(const EmailPatternMismatch&, const EmailPatternMismatch&) = default;
};

/// The first thing that keeps the text from being an address, or nothing when `matchesEmailPattern`.
///
/// It walks over the text on its own instead of asking the expression, so that it knows what it had expected
/// where. Texts of others are quoted in the sentence letter by letter at most, and what cannot be seen is
/// named by its number.
///
/// @snippet Tests/Platform/Text/EmailPatternMismatchTests.cpp Asking why
///
/// Linear. Safe to use from several threads.
ORRENBY_EXPORT std::optional<EmailPatternMismatch> emailPatternMismatch(std::string_view text);

} // namespace orrenby

template <> struct std::hash<orrenby::EmailPatternMismatch> {
    std::size_t operator()(const orrenby::EmailPatternMismatch& mismatch) const noexcept
    {
        return (std::hash<std::string>{}(mismatch.sentence) * 0x9E3779B97F4A7C15U + mismatch.position)
            * 0x9E3779B97F4A7C15U
            + static_cast<std::size_t>(mismatch.piece);
    }
};
